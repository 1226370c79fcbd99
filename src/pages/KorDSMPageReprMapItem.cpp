#include "pages/KorDSMPageReprMapItem.h"

namespace {

const FormTable kForm{
    .templateId = 2009,
    .pageCode = KorDSMDefines::kReprMap,
    .title = 33595,
    .table = kTableReprMapEntry,
    .groups =
        {
            {.fields = {{.column = 4}, {.column = 5}, {.column = 6}}},
            {.fields = {{.column = 3}, {.column = 4}, {.column = 10}, {.column = 9}},
             .via = {5},
             .side = eFormSide::kRight},
            {.fields = {{.column = 3}, {.column = 4}}, .via = {6}, .side = eFormSide::kRight},
        },
};

} // namespace

KorDSMPageReprMapItem::KorDSMPageReprMapItem(QWidget* parent) : KorDSMFormPage(parent, kForm) {}
