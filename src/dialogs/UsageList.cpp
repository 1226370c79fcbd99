#include "dialogs/UsageList.h"

#include "controls/KorListCtrl.h"
#include "controls/KorQt.h"
#include "controls/KorScreenFit.h"
#include "services/Prompts.h"

#include <QHeaderView>
#include <QToolButton>

#include <algorithm>
#include <utility>

namespace {

constexpr int kDatabase = 251;
constexpr int kKind = 252;
constexpr int kName = 310;
constexpr int kAs = 253;
constexpr int kUsedBy = 254;        // "Used by (%s)"
constexpr int kUsedByAtLeast = 491; // "Used by (at least %s)"

// Nobody shall take users of another record for users of this one.
KorString databaseOf(const KorDSMUsage& usage, const std::optional<SourceId>& ofRecord) {
    constexpr int kOfNamesake = 1366; // "%s (its own record of this name)"
    return ofRecord && usage.source != *ofRecord
               ? KorString::format(Prompts::dsm(kOfNamesake), {usage.database})
               : usage.database;
}

} // namespace

UsageList::UsageList(KorListCtrl* list, std::vector<KorDSMUsage> usages, QObject* parent)
    : QObject(parent), m_list(list) {
    m_list->insertColumn(Prompts::dsm(kName));
    for (const int title : {kKind, kAs, kDatabase})
        m_list->header()->setSectionResizeMode(m_list->insertColumn(Prompts::dsm(title)),
                                               QHeaderView::ResizeToContents);
    setUsages(std::move(usages));
    connect(list, &QAbstractItemView::clicked, this,
            [this](const QModelIndex& index) { choose(index.row()); });
    connect(list, &KorListCtrl::itemActivated, this, &UsageList::choose);
}

void UsageList::setUsages(std::vector<KorDSMUsage> usages, std::optional<SourceId> ofRecord) {
    std::ranges::stable_partition(
        usages, [&](const KorDSMUsage& usage) { return !ofRecord || usage.source == *ofRecord; });
    const KorString before = std::exchange(m_whyIncomplete, KorDSMWhereUsed::whyIncomplete());
    if (!usages.empty() && usages == m_usages && before == m_whyIncomplete)
        return;
    m_usages = std::move(usages);
    std::vector<KorListRow> rows;
    rows.reserve(m_usages.size());
    for (const KorDSMUsage& usage : m_usages)
        rows.push_back({{usage.name, usage.kind, usage.as, databaseOf(usage, ofRecord)}, -1, &usage});
    m_list->setItems(std::move(rows));
    m_list->setAccessibleName(toQt(caption()));
}

KorString UsageList::caption() const {
    return KorString::format(Prompts::dsm(m_whyIncomplete.isEmpty() ? kUsedBy : kUsedByAtLeast),
                             {KorString::number(count())});
}

void UsageList::choose(int row) {
    if (const auto* usage = m_list->getItemData(row).as<const KorDSMUsage>())
        Q_EMIT chosen(*usage);
}

void UsageList::foldBehind(QToolButton* button) {
    button->setVisible(count() > 0);
    button->setText(toQt(caption()));
    button->setToolTip(toQt(m_whyIncomplete));
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setArrowType(Qt::RightArrow);
    button->setCheckable(true);
    button->setAutoRaise(true);
    connect(button, &QToolButton::toggled, this, [this, button](bool unfolded) {
        button->setArrowType(unfolded ? Qt::DownArrow : Qt::RightArrow);
        m_list->setVisible(unfolded);
        m_list->window()->adjustSize();
        KorScreenFit::fit(*m_list->window());
    });
}
