#include "pages/KorDSMPageSystemAndBox.h"

namespace {

constexpr int kViewDirection = 673;
constexpr int kModelBox = 674;

const FormTable kForm{
    .templateId = 2008,
    .pageCode = KorDSMDefines::kSystemAndBox,
    .title = 33772,
    .table = kTableSystemAndBox,
    .groups =
        {
            {.caption = kViewDirection,
             .fields = {{.column = 2},
                        {.column = 3},
                        {.column = 3, .via = {3}},
                        {.column = 4},
                        {.column = 9},
                        {.column = 10}}},
            {.caption = kModelBox,
             .fields =
                 {{.column = 5}, {.column = 3, .via = {5}}, {.column = 6}, {.column = 7}, {.column = 8}},
             .side = eFormSide::kRight},
        },
};

} // namespace

KorDSMPageSystemAndBox::KorDSMPageSystemAndBox(QWidget* parent) : KorDSMFormPage(parent, kForm) {}
