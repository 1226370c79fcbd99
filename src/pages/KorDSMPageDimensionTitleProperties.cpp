#include "pages/KorDSMPageDimensionTitleProperties.h"

namespace {

constexpr int kPlacing = 677;

const FormTable kForm{
    .templateId = 2321,
    .pageCode = 33,
    .title = 33994,
    .table = kTableDimRequest,
    .groups =
        {
            {.caption = kPlacing, .fields = {{.column = 9}}},
            {.fields = {{.column = 8, .isLabel = true}}, .side = eFormSide::kBelow},
        },
};

} // namespace

KorDSMPageDimensionTitleProperties::KorDSMPageDimensionTitleProperties(QWidget* parent)
    : KorDSMFormPage(parent, kForm) {}
