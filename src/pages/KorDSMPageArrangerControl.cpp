#include "pages/KorDSMPageArrangerControl.h"

namespace {

const FormTable kForm{
    .templateId = 2013,
    .pageCode = KorDSMDefines::kAnnotationArrangement,
    .title = 33805,
    .table = kTableArrangerControl,
    .groups =
        {
            {.fields = {{.column = 3},
                        {.column = 4},
                        {.column = 5},
                        {.column = 6},
                        {.column = 2, .decidesPages = true}}},
        },
};

} // namespace

KorDSMPageArrangerControl::KorDSMPageArrangerControl(QWidget* parent) : KorDSMFormPage(parent, kForm) {}
