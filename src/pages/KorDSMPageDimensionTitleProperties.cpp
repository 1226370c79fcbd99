#include "pages/KorDSMPageDimensionTitleProperties.h"

namespace {

const FormTable kForm{
    .templateId = 2321,
    .pageCode = 33,
    .title = 33994,
    .table = kTableDimRequest,
    .groups =
        {
            {.fields = {{.column = 9, .isPictured = true}}},
            {.fields = {{.column = 8, .isLabel = true}}, .side = eFormSide::kBelow},
        },
};

} // namespace

KorDSMPageDimensionTitleProperties::KorDSMPageDimensionTitleProperties(QWidget* parent)
    : KorDSMFormPage(parent, kForm) {}
