#include "pages/RestRow.h"

#include "controls/KorControls.h"
#include "controls/KorFoldingColumns.h"
#include "controls/KorQt.h"
#include "pages/KorDSMPage.h"
#include "pages/PageFields.h"
#include "services/Prompts.h"

#include <QBoxLayout>
#include <QLabel>
#include <QRadioButton>

#include <algorithm>

namespace {

struct Rest {
    eTableType parts;
    int column; // of the whole: 0 or 1
    int head;
    int choices[2];
};
constexpr Rest kRests[] = {{kTableReprMapEntry, 3, 769, {770, 771}}};
constexpr int kRadios[] = {5890, 5891};

const Rest* restOf(eTableType parts) {
    const auto* rest = std::ranges::find(kRests, parts, &Rest::parts);
    return rest == std::end(kRests) ? nullptr : rest;
}

} // namespace

RestRow::RestRow(KorDSMPage& page, eTableType parts) : m_page(page), m_column(restOf(parts)->column) {
    auto* line = new KorFoldingColumns(this);
    line->setContentsMargins(6, 2, 6, 2);
    line->setSpacing(16);
    auto* radios = new QHBoxLayout;
    radios->setSpacing(16);
    auto* head = new QLabel(toQt(Prompts::dsm(restOf(parts)->head)));
    line->addWidget(head);
    line->addLayout(radios);
    for (int value = 0; value < 2; ++value) {
        auto* radio = new QRadioButton(toQt(Prompts::dsm(restOf(parts)->choices[value])));
        KorControls::setId(radio, kRadios[value]);
        radio->setAccessibleName(head->text() + u' ' + radio->text());
        radios->addWidget(radio);
    }
    line->addStretch(1);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::AlternateBase);
}

bool RestRow::isFor(eTableType parts) {
    return restOf(parts) != nullptr;
}

void RestRow::load(RowRef whole) {
    m_whole = whole;
    if (!m_fields) {
        std::vector<PageField> fields = {{.column = m_column, .radios = {{kRadios[0], 0}, {kRadios[1], 1}}}};
        const auto* item = m_page.getData().as<KorDSMDatabaseItem>();
        const bool isItems = item && item->tableType() == whole.table;
        m_fields = isItems ? new PageFields(m_page, std::move(fields))
                           : new PageFields(m_page, std::move(fields), [this] {
                                 return PageFields::Row{m_whole.table, KorOdbcKey(m_whole.key)};
                             });
        m_fields->connectControls();
        connect(m_fields, &PageFields::refused, m_fields, &PageFields::loadColumn);
        connect(m_fields, &PageFields::written, &m_page, [this] { m_page.reload(); });
    }
    m_fields->load();
}
