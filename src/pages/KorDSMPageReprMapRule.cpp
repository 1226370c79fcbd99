#include "pages/KorDSMPageReprMapRule.h"

namespace {

const FormTable kForm{
    .templateId = 2007,
    .pageCode = KorDSMDefines::kReprMapRule,
    .title = 33580,
    .table = kTableReprMap,
    .groups =
        {
            {.fields = {{.column = 2}}},
        },
};

} // namespace

KorDSMPageReprMapRule::KorDSMPageReprMapRule(QWidget* parent) : KorDSMFormPage(parent, kForm) {}
