#include "pages/KorDSMPageDimPointSelection.h"

namespace {

constexpr int kObjects = 668;
constexpr int kPoints = 669;

const FormTable kForm{
    .templateId = 2015,
    .pageCode = KorDSMDefines::kPointSelection,
    .title = 33645,
    .table = kTablePointSelection,
    .groups =
        {
            {.caption = kObjects, .fields = {{.column = 2}, {.column = 5}, {.column = 8}}},
            {.caption = kPoints,
             .fields =
                 {{.column = 3}, {.column = 4}, {.column = 6}, {.column = 3, .via = {6}}, {.column = 7}},
             .side = eFormSide::kRight},
        },
};

} // namespace

KorDSMPageDimPointSelection::KorDSMPageDimPointSelection(QWidget* parent) : KorDSMFormPage(parent, kForm) {}
