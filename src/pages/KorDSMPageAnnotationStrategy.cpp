#include "pages/KorDSMPageAnnotationStrategy.h"

namespace {

constexpr int kFiledUnder = 667;
constexpr int kPlacing = 677;
constexpr int kContents = 1404; // whose size decides, which the type has, too
const FormCondition kHasArrow{.column = 2, .values = {0}, .isNoneOf = true};

const FormTable kForm{
    .templateId = 2012,
    .pageCode = KorDSMDefines::kAnnotationStrategy,
    .title = 33790,
    .table = kTableAnnotationStrategy,
    .groups =
        {
            {.fields = {{.column = 3},
                        {.column = 2, .via = {3}},
                        {.column = 4, .via = {3}},
                        {.column = 5, .via = {3}},
                        {.column = 6, .via = {3}}},
             .named = kTableAnnotationType},
            {.caption = kFiledUnder, .fields = {{.column = 2}, {.column = 2, .via = {2}}}},
            {.fields = {{.column = 3, .via = {3}},
                        {.column = 2, .via = {3, 3}},
                        {.column = 3, .via = {3, 3}, .live = kHasArrow},
                        {.column = 4, .via = {3, 3}}},
             .side = eFormSide::kRight,
             .named = kTableLeaderStyle},
            {.caption = kPlacing,
             .fields = {{.column = 4}, {.column = 5}, {.column = 7}},
             .side = eFormSide::kRight},
            {.caption = kContents, .fields = {{.column = 6, .isLabel = true}}, .side = eFormSide::kBelow},
        },
};

} // namespace

KorDSMPageAnnotationStrategy::KorDSMPageAnnotationStrategy(QWidget* parent) : KorDSMFormPage(parent, kForm) {}
