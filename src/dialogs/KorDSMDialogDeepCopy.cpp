#include "dialogs/KorDSMDialogDeepCopy.h"

#include "controls/KorControls.h"
#include "controls/KorQt.h"
#include "services/Prompts.h"
#include "session/KorDSMValueText.h"
#include "session/KorDSMWhereUsed.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QScreen>
#include <QTreeWidget>

#include <algorithm>
#include <array>
#include <map>

namespace {

constexpr int kTemplate = 2370;
constexpr int kHead = 2371;
constexpr int kSourceLabel = 2372;
constexpr int kSource = 2373;
constexpr int kChoice = 2374;
constexpr int kRows = 2375;
constexpr int kNamesakes = 2376;
constexpr std::array kRadios = {2377, 2378, 2379}; // in the order of eNamesakes
constexpr int kSummary = 2380;

constexpr int kTitle = 601;
constexpr int kInto = 604;
constexpr int kNamesakesText = 605;
constexpr int kFirstRadioText = 606;
constexpr int kRecordTitle = 609;
constexpr int kFateTitle = 610;
constexpr int kCopyText = 611;
constexpr int kKind = 612; // "%s (%s)"
constexpr int kNothing = 613;
constexpr int kFrom = 616;
constexpr int kChoose = 617;

constexpr QSize kUsualSize(900, 560);
constexpr double kMostOfScreen = 0.9;

KorString counted(const KorString& text, std::size_t count) {
    return KorString::format(Prompts::dsm(kKind),
                             {text, KorString::number(static_cast<std::int64_t>(count))});
}

} // namespace

KorDSMDialogDeepCopy::KorDSMDialogDeepCopy(SourceId from, std::vector<RowRef> records, QWidget* parent)
    : KorDSMDialogDeepCopy(
          KorDSMDeepCopy::Wish{from, KorDSMDeepCopy::targetsFor(from).front(), std::move(records)}, nullptr,
          parent) {}

KorDSMDialogDeepCopy::KorDSMDialogDeepCopy(SourceId to, const KorDSMSection& section, QWidget* parent)
    : KorDSMDialogDeepCopy(KorDSMDeepCopy::Wish{SourceId::standard(), to, {}}, &section, parent) {}

KorDSMDialogDeepCopy::KorDSMDialogDeepCopy(KorDSMDeepCopy::Wish wish, const KorDSMSection* section,
                                           QWidget* parent)
    : KorDSMDialog(kTemplate, parent), m_wish(std::move(wish)), m_section(section),
      m_head(KorControls::find<QLabel>(this, kHead)), m_summary(KorControls::find<QLabel>(this, kSummary)),
      m_source(KorControls::find<QComboBox>(this, kSource)),
      m_choice(KorControls::find<QTreeWidget>(this, kChoice)),
      m_rows(KorControls::find<QTreeWidget>(this, kRows)), m_copy(KorControls::find<QPushButton>(this, 1)) {
    setTexts();
    setUpSources();
    setUpChoices();
    for (std::size_t i = 0; i < kRadios.size(); ++i)
        connect(KorControls::find<QRadioButton>(this, kRadios[i]), &QRadioButton::clicked, this, [this, i] {
            m_wish.namesakes = static_cast<eNamesakes>(i);
            preview();
        });
    connectButtons();
    resize(kUsualSize.boundedTo(screen()->availableSize() * kMostOfScreen));
    preview();
    (m_section ? static_cast<QWidget*>(m_choice) : m_rows)->setFocus();
}

void KorDSMDialogDeepCopy::setTexts() {
    setWindowTitle(toQt(Prompts::dsm(kTitle)));
    setCaption(kSourceLabel, m_section ? kFrom : kInto, "DSM");
    setCaption(kNamesakes, kNamesakesText, "DSM");
    for (std::size_t i = 0; i < kRadios.size(); ++i)
        setCaption(kRadios[i], kFirstRadioText + static_cast<int>(i), "DSM");
    KorControls::find<QRadioButton>(this, kRadios[0])->setChecked(true);
    setCaption(1, kCopyText, "DSM");
    setCaption(2, 33741);
    m_rows->setHeaderLabels({toQt(Prompts::dsm(kRecordTitle)), toQt(Prompts::dsm(kFateTitle))});
    m_rows->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_rows->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    m_rows->header()->setStretchLastSection(false);
    m_rows->setAccessibleName(toQt(Prompts::dsm(kFateTitle)));
    m_choice->setHeaderHidden(true);
    m_choice->setAccessibleName(toQt(Prompts::dsm(kChoose)));
    m_head->setText(toQt(m_section ? Prompts::dsm(kChoose) : KorDSMDeepCopy::headOf(m_wish)));
}

void KorDSMDialogDeepCopy::setUpSources() {
    m_sources = m_section ? KorDSMDeepCopy::originsFor(m_wish.to) : KorDSMDeepCopy::targetsFor(m_wish.from);
    for (const SourceId id : m_sources)
        m_source->addItem(toQt(KorDSMWhereUsed::sourceName(id)));
    if (m_section && !m_sources.empty())
        m_wish.from = m_sources.front();
    connect(m_source, &QComboBox::activated, this, [this](int index) {
        (m_section ? m_wish.from : m_wish.to) = m_sources[static_cast<std::size_t>(index)];
        fillChoices();
        preview();
    });
}

void KorDSMDialogDeepCopy::setUpChoices() {
    m_choice->setVisible(m_section);
    connect(m_choice, &QTreeWidget::itemChanged, this, [this] {
        if (!m_filling)
            onChecked();
    });
    fillChoices();
}

void KorDSMDialogDeepCopy::fillChoices() {
    if (!m_section)
        return;
    const QScopedValueRollback filling(m_filling, true);
    m_choice->clear();
    m_wish.records.clear();
    m_choices = KorDSMDeepCopy::choicesOf(m_wish.from, *m_section);
    QTreeWidgetItem* group = nullptr;
    for (std::size_t i = 0; i < m_choices.size(); ++i) {
        if (i == 0 || m_choices[i].group != m_choices[i - 1].group) {
            group = new QTreeWidgetItem(m_choice, {toQt(m_choices[i].group)});
            group->setFlags(group->flags() | Qt::ItemIsUserCheckable | Qt::ItemIsAutoTristate);
            group->setCheckState(0, Qt::Unchecked);
        }
        auto* item = new QTreeWidgetItem(group, {toQt(m_choices[i].name)});
        item->setData(0, Qt::UserRole, static_cast<int>(i));
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(0, Qt::Unchecked);
    }
    if (m_choice->topLevelItemCount() == 1)
        m_choice->expandAll();
}

void KorDSMDialogDeepCopy::onChecked() {
    m_wish.records.clear();
    for (int i = 0; i < m_choice->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* group = m_choice->topLevelItem(i);
        for (int j = 0; j < group->childCount(); ++j)
            if (group->child(j)->checkState(0) == Qt::Checked)
                m_wish.records.push_back(
                    m_choices[static_cast<std::size_t>(group->child(j)->data(0, Qt::UserRole).toInt())].row);
    }
    QMetaObject::invokeMethod(this, &KorDSMDialogDeepCopy::preview, Qt::QueuedConnection);
}

void KorDSMDialogDeepCopy::preview() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const KorDSMDeepCopy::Outcome outcome = KorDSMDeepCopy::preview(m_wish);
    QApplication::restoreOverrideCursor();
    showRows(outcome.report);
    const auto isEqual = [](const ImportReport::Row& row) {
        return row.fate == ImportReport::Row::eFate::kEqual ||
               row.fate == ImportReport::Row::eFate::kUsedTheirs;
    };
    const bool changesNothing = outcome.done && std::ranges::all_of(outcome.report.rows, isEqual);
    m_summary->setText(toQt(changesNothing ? Prompts::dsm(kNothing)
                            : outcome.done ? KorDSMDeepCopy::summaryOf(outcome.report)
                                           : outcome.error));
    m_copy->setEnabled(outcome.done && !changesNothing);
}

// By kind, what is changed in the target first.
void KorDSMDialogDeepCopy::showRows(const ImportReport& report) {
    m_rows->clear();
    std::map<eTableType, std::vector<const ImportReport::Row*>> kinds;
    for (const ImportReport::Row& row : report.rows)
        kinds[row.table].push_back(&row);
    for (const auto& [table, rows] : kinds) {
        auto* kind = new QTreeWidgetItem(
            m_rows, {toQt(counted(KorDSMValueText::tableCaption(*findTable(table)), rows.size()))});
        bool brings = false;
        for (const ImportReport::Row* row : rows) {
            new QTreeWidgetItem(kind, {toQt(row->name), toQt(KorDSMDeepCopy::fateText(row->fate))});
            brings = brings || row->fate != ImportReport::Row::eFate::kEqual;
        }
        kind->setExpanded(brings);
    }
}
