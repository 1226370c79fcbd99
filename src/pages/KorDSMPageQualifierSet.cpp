#include "pages/KorDSMPageQualifierSet.h"

namespace {

constexpr int kFiledUnder = 667;

const FormTable kForm{
    .templateId = 2011,
    .pageCode = KorDSMDefines::kQualifierSet,
    .title = 33675,
    .table = kTableQualifierSet,
    .groups =
        {
            {.fields = {{.column = 3}, {.column = 4}}},
            {.caption = kFiledUnder,
             .fields = {{.column = 2}, {.column = 2, .via = {2}}},
             .side = eFormSide::kRight},
            {.fields = {{.column = 2}, {.column = 2, .via = {2}}, {.column = 3}, {.column = 4}},
             .via = {3},
             .side = eFormSide::kBelow,
             .part = kTableQualifierWithRole},
            {.fields = {{.column = 2}},
             .via = {4},
             .side = eFormSide::kBelow,
             .part = kTableQualifierWithRole},
            {.fields = {{.column = 2}, {.column = 3}, {.column = 4}},
             .via = {5},
             .side = eFormSide::kBelow,
             .part = kTableQualifierWithRole},
        },
};

} // namespace

KorDSMPageQualifierSet::KorDSMPageQualifierSet(QWidget* parent) : KorDSMFormPage(parent, kForm) {}
