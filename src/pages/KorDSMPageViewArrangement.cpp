#include "pages/KorDSMPageViewArrangement.h"

namespace {

using RowPaths::kIdentifier;
constexpr int kGeneral = 666;
constexpr int kFiledUnder = 667;
const FormCondition kGridIsShown{.column = 2, .values = {1}};
// Those of the host come without a file.
const FormCondition kIsFromFile{.column = 3, .values = {0}};

const FormTable kForm{
    .templateId = 2001,
    .pageCode = 5,
    .title = 33538,
    .table = kTableDetailStyle,
    .groups =
        {
            {.caption = kGeneral, .fields = {{.column = 3}, {.column = 9}}},
            {.caption = kFiledUnder,
             .fields = {{.column = 5, .via = {kIdentifier}}, {.column = 3, .via = {kIdentifier, 5}}}},
            {.fields = {{.column = 2},
                        {.column = 2, .via = {2}},
                        {.column = 3, .via = {2}},
                        {.column = 4, .via = {2}},
                        {.column = 5, .via = {2}},
                        {.column = 6, .via = {2}},
                        {.column = 7, .via = {2}}},
             .named = kTableViewArrangeStrategy},
            {.fields = {{.column = 10},
                        {.column = 2, .via = {10}},
                        {.column = 3, .via = {10}, .live = kGridIsShown},
                        {.column = 4, .via = {10}, .live = kGridIsShown},
                        {.column = 5, .via = {10}, .live = kGridIsShown},
                        {.column = 2, .via = {10, 5}, .live = kIsFromFile}},
             .side = eFormSide::kRight,
             .named = kTableGridRefSettings},
            {.fields = {{.column = 11},
                        {.column = 2, .via = {11}},
                        {.column = 3, .via = {11}},
                        {.column = 4, .via = {11}},
                        {.column = 5, .via = {11}}},
             .side = eFormSide::kRight,
             .named = kTableHcadSettings},
        },
};

} // namespace

KorDSMPageViewArrangement::KorDSMPageViewArrangement(QWidget* parent) : KorDSMFormPage(parent, kForm) {}
