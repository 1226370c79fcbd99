#include "pages/KorDSMPageAppearance.h"

namespace {

constexpr int kVisibleEdges = 671;
constexpr int kHiddenEdges = 672;
// Those of the host come without a file.
const FormCondition kIsFromFile{.column = 3, .values = {0}};
// The status of edges that are not drawn is 0. Without a status they are drawn.
const FormCondition kVisibleIsDrawn{.via = {2}, .column = 2, .values = {0}, .isNoneOf = true};
const FormCondition kHiddenIsDrawn{.via = {5}, .column = 2, .values = {0}, .isNoneOf = true};

const FormTable kForm{
    .templateId = 2016,
    .pageCode = KorDSMDefines::kAppearance,
    .title = 33685,
    .table = kTableAppearance,
    .groups =
        {
            {.caption = kVisibleEdges,
             .fields = {{.column = 2},
                        {.column = 3, .live = kVisibleIsDrawn},
                        {.column = 2, .via = {3}, .live = kIsFromFile},
                        {.column = 4, .live = kVisibleIsDrawn},
                        {.column = 10}}},
            {.caption = kHiddenEdges,
             .fields = {{.column = 5},
                        {.column = 6, .live = kHiddenIsDrawn},
                        {.column = 2, .via = {6}, .live = kIsFromFile},
                        {.column = 7, .live = kHiddenIsDrawn},
                        {.column = 8}}},
            {.fields = {{.column = 9},
                        {.column = 2, .via = {9}},
                        {.column = 3, .via = {9}},
                        {.column = 4, .via = {9}},
                        {.column = 5, .via = {9}}},
             .side = eFormSide::kRight,
             .named = kTableHatchSettings},
        },
};

} // namespace

KorDSMPageAppearance::KorDSMPageAppearance(QWidget* parent) : KorDSMFormPage(parent, kForm) {}
