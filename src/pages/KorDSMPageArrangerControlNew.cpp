#include "pages/KorDSMPageArrangerControlNew.h"

namespace {

const FormTable kForm{
    .templateId = 2017,
    .pageCode = KorDSMDefines::kSecondArrangerControl,
    .title = 33805,
    .table = kTableArrangerControl,
    .groups =
        {
            {.fields = {{.column = 3},
                        {.column = 4},
                        {.column = 5},
                        {.column = 6},
                        {.column = 2, .decidesPages = true}},
             .of = kTableArrangerControl},
            {.fields = {{.column = 2}, {.column = 3}, {.column = 4}, {.column = 5}},
             .of = kTableArrangerStrategy},
        },
};

} // namespace

KorDSMPageArrangerControlNew::KorDSMPageArrangerControlNew(QWidget* parent) : KorDSMFormPage(parent, kForm) {}
