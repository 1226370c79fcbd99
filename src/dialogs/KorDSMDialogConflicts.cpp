#include "dialogs/KorDSMDialogConflicts.h"

#include "controls/KorControls.h"
#include "controls/KorMFCGridCtrl.h"
#include "controls/KorQt.h"
#include "services/Prompts.h"
#include "session/KorDSMWhereUsed.h"

#include <QHeaderView>
#include <QPushButton>
#include <QScreen>

#include <algorithm>
#include <array>

namespace {

constexpr int kTemplate = 2360;
constexpr int kQuestionLabel = 2361;
constexpr int kGrid = 2362;
constexpr int kAllMineButton = 2363;
constexpr int kAllStoredButton = 2364;

constexpr int kTitle = 213;
constexpr int kQuestion = 214;
constexpr int kAllMine = 215;
constexpr int kAllStored = 216;
constexpr int kOnlyTold = 442; // the text where nothing can be chosen
constexpr std::array kColumnTitles = {443, 444, 1300, 445, 446};
enum eColumn { kRecord, kProperty, kBefore, kMine, kStored };

constexpr QSize kUsualSize(860, 420);
constexpr double kMostOfScreen = 0.9;

QString wrapped(const QString& text) {
    return QStringLiteral("<p>%1</p>").arg(text.toHtmlEscaped());
}

} // namespace

KorDSMDialogConflicts::KorDSMDialogConflicts(std::vector<OutsideChange> changes, QWidget* parent)
    : KorDSMDialog(kTemplate, parent), m_changes(std::move(changes)),
      m_grid(KorControls::find<KorMFCGridCtrl>(this, kGrid)) {
    addColumns();
    addRows();
    connect(KorControls::find<QPushButton>(this, kAllMineButton), &QPushButton::clicked, this,
            [this] { choose(kMine); });
    connect(KorControls::find<QPushButton>(this, kAllStoredButton), &QPushButton::clicked, this,
            [this] { choose(kStored); });
    resize(kUsualSize.boundedTo(screen()->availableSize() * kMostOfScreen));
    m_grid->setFocus();
    m_grid->setCurrentCell(0, kMine);
}

void KorDSMDialogConflicts::setTexts(bool canChoose) {
    setWindowTitle(toQt(Prompts::dsm(kTitle)));
    m_grid->setAccessibleName(windowTitle());
    setCaption(kQuestionLabel, canChoose ? kQuestion : kOnlyTold, "DSM");
    setCaption(kAllMineButton, kAllMine, "DSM");
    setCaption(kAllStoredButton, kAllStored, "DSM");
    setCaption(1, 33740);
    for (const int button : {kAllMineButton, kAllStoredButton})
        KorControls::find(this, button)->setVisible(canChoose);
}

void KorDSMDialogConflicts::addColumns() {
    for (const int title : kColumnTitles) {
        const bool isValue = m_grid->columnCount() >= kMine;
        m_grid->insertColumn(Prompts::dsm(title),
                             isValue ? KorMFCGridCtrl::eRadio : KorMFCGridCtrl::eReadOnly);
    }
    m_grid->setColumnWidths({21, 15, 18, 23, 23});
    // What is different is often at the end of a text, and why something cannot stay always.
    m_grid->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
}

void KorDSMDialogConflicts::addRows() {
    const auto hasConflicts = [](const OutsideChange& change) { return !change.conflicts.empty(); };
    const bool severalSources = std::ranges::count_if(m_changes, hasConflicts) > 1;
    bool canChoose = false;
    for (const OutsideChange& change : m_changes)
        for (const OutsideConflict& conflict : change.conflicts) {
            const auto words = KorDSMConflictWords::of(change.source, conflict);
            const KorString record =
                severalSources
                    ? KorString::format("%s (%s)", {words.record, KorDSMWhereUsed::sourceName(change.source)})
                    : words.record;
            const int row =
                m_grid->addRow({record, words.property, words.before, words.mine, words.beside()});
            for (int column = 0; column < m_grid->columnCount(); ++column)
                m_grid->item(row, column)->setToolTip(wrapped(m_grid->item(row, column)->text()));
            for (const int column : {kMine, kStored})
                m_grid->setCellEnabled(row, column, words.canChoose());
            if (words.canChoose())
                m_grid->setCellCheck(row, kMine, true);
            canChoose = canChoose || words.canChoose();
        }
    setTexts(canChoose);
}

void KorDSMDialogConflicts::choose(int column) {
    for (int row = 0; row < m_grid->rowCount(); ++row)
        if (m_grid->isCellChecked(row, kMine) || m_grid->isCellChecked(row, kStored))
            m_grid->setCellCheck(row, column, true);
}

std::vector<OutsideChange> KorDSMDialogConflicts::mine() const {
    std::vector<OutsideChange> mine = m_changes;
    int row = 0;
    for (OutsideChange& change : mine)
        std::erase_if(change.conflicts, [&](const OutsideConflict&) {
            return m_grid->isCellChecked(row++, kStored) && result() == Accepted;
        });
    return mine;
}

std::vector<OutsideChange> KorDSMDialogConflicts::ask(const std::vector<OutsideChange>& changes,
                                                      QWidget* parent) {
    KorDSMDialogConflicts dialog(changes, parent);
    dialog.exec();
    return dialog.mine();
}
