#include "pages/KorDSMPageDimRequest.h"

namespace {

constexpr int kFiledUnder = 667;
constexpr int kPoints = 669;
constexpr int kOrdinates = 670;
// By the number of the kind of dimension.
const FormCondition kIsOrdinate{.via = {3}, .column = 2, .values = {1}};

const FormTable kForm{
    .templateId = 2014,
    .pageCode = KorDSMDefines::kDimRequest,
    .title = 33625,
    .table = kTableDimRequest,
    .groups =
        {
            {.caption = kFiledUnder, .fields = {{.column = 2}, {.column = 2, .via = {2}}}},
            {.fields =
                 {{.column = 3}, {.column = 4}, {.column = 3, .via = {4}}, {.column = 10}, {.column = 11}}},
            {.caption = kPoints,
             .fields = {{.column = 12}, {.column = 13}, {.column = 14}},
             .side = eFormSide::kRight},
            {.caption = kOrdinates,
             .fields = {{.column = 5, .live = kIsOrdinate},
                        {.column = 6, .live = kIsOrdinate},
                        {.column = 7, .live = kIsOrdinate}},
             .side = eFormSide::kRight},
        },
};

} // namespace

KorDSMPageDimRequest::KorDSMPageDimRequest(QWidget* parent) : KorDSMFormPage(parent, kForm) {}
