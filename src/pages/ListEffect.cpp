#include "pages/ListEffect.h"

#include "controls/KorMFCGridCtrl.h"
#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "operations/CurrentRows.h"
#include "services/Prompts.h"
#include "session/KorDSMPreview.h"
#include "session/KorDSMValueText.h"

#include <QMenu>
#include <QSignalBlocker>

#include <algorithm>

namespace {

constexpr int kTakes = 925;
constexpr int kTakenBefore = 926;
constexpr int kNever = 927;
constexpr int kOff = 928;
constexpr int kLeaveOut = 929;
constexpr int kHoldsFor = 961;
constexpr int kUnknown = 962; // "%s, of %s not known"
constexpr int kAtMost = 1360; // "%s to %s"
constexpr int kNotCounted = 1418;
constexpr int kWarning = 394; // icon

KorString countOf(const std::vector<int>& objects) {
    return objects.empty() ? KorDSMValueText::nothing() : KorString::number(std::ssize(objects));
}

} // namespace

ListEffect::ListEffect(KorMFCGridCtrl& grid, eTableType parts)
    : QObject(&grid), m_grid(grid), m_isFirstMatch(KorDSMListEffect::isFirstMatch(parts)),
      m_takes(
          grid.insertColumn(Prompts::dsm(m_isFirstMatch ? kTakes : kHoldsFor), KorMFCGridCtrl::eReadOnly)),
      m_takenBefore(m_isFirstMatch ? grid.insertColumn(Prompts::dsm(kTakenBefore), KorMFCGridCtrl::eReadOnly)
                                   : -1) {}

void ListEffect::show(RowRef whole, const std::vector<std::int32_t>& keys) {
    const KorDSMPreview* preview = KorDSMPreview::shown();
    const auto effects = KorDSMListEffect::of(CurrentRows::source(), whole, preview);
    const bool isKnown = preview || std::ranges::any_of(effects, [](const KorDSMListEffect::Row& row) {
                             return !row.never.isEmpty();
                         });
    m_grid.setColumnHidden(m_takes, !isKnown);
    if (m_isFirstMatch)
        m_grid.setColumnHidden(m_takenBefore, !preview);
    m_rows.clear();
    for (const std::int32_t key : keys) {
        const auto effect = std::ranges::find(effects, key, &KorDSMListEffect::Row::key);
        m_rows.push_back(effect == effects.end() ? KorDSMListEffect::Row{key} : *effect);
        if (isKnown)
            showRow(static_cast<int>(m_rows.size()) - 1, m_rows.back());
    }
}

void ListEffect::showRow(int place, const KorDSMListEffect::Row& row) {
    const QSignalBlocker quiet(m_grid); // a tooltip is no edit
    const bool isCounted = KorDSMPreview::shown() != nullptr;
    KorString text = isCounted ? countOf(row.takes) : Prompts::dsm(kNotCounted);
    KorString more;
    if (isCounted && !row.unknown.empty()) {
        text = KorString::number(std::ssize(row.takes));
        more = KorString::format(Prompts::dsm(kUnknown), {text, KorString::number(std::ssize(row.unknown))});
        text = KorString::format(Prompts::dsm(kAtMost),
                                 {text, KorString::number(std::ssize(row.takes) + std::ssize(row.unknown))});
    }
    const RowRef part{m_isFirstMatch ? kTableReprMapEntry : kTableQualifierWithRole, row.key};
    if (row.takes.empty())
        if (const KorString why = KorDSMListEffect::whyNothing(CurrentRows::source(), part); !why.isEmpty())
            text = why;
    if (!row.never.isEmpty()) {
        text = Prompts::dsm(kNever);
        more = row.never;
    }
    if (row.isOff)
        text = Prompts::dsm(kOff);
    m_grid.setCellText(place, m_takes, text);
    m_grid.setCellPicture(place, m_takes, row.never.isEmpty() ? QIcon() : KorPictures::icon(kWarning));
    if (m_isFirstMatch)
        m_grid.setCellText(place, m_takenBefore, isCounted ? countOf(row.takenBefore) : KorString());
    if (QTableWidgetItem* item = m_grid.item(place, m_takes)) {
        item->setToolTip(toQt(more));
        item->setData(Qt::AccessibleDescriptionRole, toQt(more));
    }
}

std::vector<int> ListEffect::objectsAt(int row, int column) const {
    if (row < 0 || row >= std::ssize(m_rows))
        return {};
    const KorDSMListEffect::Row& shown = m_rows[static_cast<std::size_t>(row)];
    return column == m_takes                           ? shown.takes
           : m_isFirstMatch && column == m_takenBefore ? shown.takenBefore
                                                       : std::vector<int>();
}

void ListEffect::addTo(QMenu& menu, const std::vector<std::int32_t>& keys) const {
    KorDSMPreview* preview = KorDSMPreview::shown();
    if (!preview || !m_isFirstMatch)
        return;
    QAction* action = menu.addAction(toQt(Prompts::dsm(kLeaveOut)), this, [preview, keys](bool off) {
        for (const std::int32_t key : keys)
            preview->leaveOut(key, off);
    });
    action->setCheckable(true);
    action->setChecked(
        std::ranges::all_of(keys, [preview](std::int32_t key) { return preview->isLeftOut(key); }));
}
