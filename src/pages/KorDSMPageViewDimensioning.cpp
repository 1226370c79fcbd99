#include "pages/KorDSMPageViewDimensioning.h"

namespace {

const FormTable kForm{
    .templateId = 2010,
    .pageCode = KorDSMDefines::kViewDimensioning,
    .title = 33610,
    .table = kTableViewDimStrategy,
    .groups =
        {
            {.fields = {{.column = 2}, {.column = 3}, {.column = 4}, {.column = 5}}},
        },
};

} // namespace

KorDSMPageViewDimensioning::KorDSMPageViewDimensioning(QWidget* parent) : KorDSMFormPage(parent, kForm) {}
