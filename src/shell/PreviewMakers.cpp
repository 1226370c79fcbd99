#include "shell/PreviewMakers.h"

#include "controls/KorMnemonics.h"
#include "controls/KorQt.h"
#include "services/CKorHelp.h"
#include "services/Prompts.h"
#include "shell/DrawingOutput.h"
#include "shell/Navigation.h"
#include "shell/WhenFree.h"

#include <QMenu>

#include <algorithm>

namespace {

constexpr int kFit = 902;
constexpr int kActualSize = 903;
constexpr int kMadeBy = 917;  // "What made it"
constexpr int kWhy = 918;     // "Why does this look so?"
constexpr int kEntries = 919; // "Which entry decides"
constexpr int kHelp = 923;
constexpr int kNothingMade = 924;

} // namespace

PreviewMakers::PreviewMakers(KorDSMPreview& preview, PreviewPane& pane, Navigation& navigation,
                             const DrawingOutput& output, std::function<bool()> isBefore)
    : m_preview(preview), m_pane(pane), m_navigation(navigation), m_output(output),
      m_isBefore(std::move(isBefore)) {
    const PreviewView& view = pane.view();
    connect(&view, &PreviewView::pointedAt, this, &PreviewMakers::onPointedAt);
    connect(&view, &PreviewView::clicked, this, &PreviewMakers::listMakers);
    connect(&view, &PreviewView::menuWanted, this, &PreviewMakers::showMenu);
    connect(&view, &PreviewView::doubleClicked, this, [this](std::size_t place) {
        std::vector<Cells> cells;
        if (!m_isBefore())
            for (const KorDSMPreview::Maker& maker : m_preview.makersOf(place))
                cells.push_back({maker.row, maker.columns});
        goTo(std::move(cells));
    });
    connect(&pane, &PreviewPane::rowChosen, this, [this](int row) {
        if (row >= 0 && row < std::ssize(m_listed))
            goTo({m_listed[static_cast<std::size_t>(row)]});
    });
}

void PreviewMakers::onPointedAt(std::optional<std::size_t> place) {
    const auto makers =
        place && !m_isBefore() ? m_preview.makersOf(*place) : std::vector<KorDSMPreview::Maker>();
    m_pane.view().setToolTip(makers.empty() ? QString() : toQt(makers.front().text));
}

void PreviewMakers::listMakers(std::size_t place) {
    if (m_isBefore())
        return;
    m_listed.clear();
    QStringList rows;
    for (const KorDSMPreview::Maker& maker : m_preview.makersOf(place)) {
        m_listed.push_back({maker.row, maker.columns});
        rows << toQt(maker.text);
    }
    m_pane.showList(toQt(Prompts::dsm(rows.isEmpty() ? kNothingMade : kMadeBy)), rows);
}

void PreviewMakers::listReasons(std::size_t place) {
    m_listed.clear();
    QStringList rows;
    int decides = -1;
    for (const KorDSMPreview::Reason& reason : m_preview.reasonsFor(place)) {
        if (reason.decides)
            decides = static_cast<int>(rows.size());
        m_listed.push_back({reason.row, reason.columns});
        rows << toQt(reason.text);
    }
    m_pane.showList(toQt(Prompts::dsm(kEntries)), rows, decides);
}

// To the first of the cells that has a field on the page of its record; where none has, to the nearest page.
void PreviewMakers::goTo(std::vector<Cells> nearestFirst) {
    if (nearestFirst.empty())
        return;
    whenFree(this, [this, nearestFirst = std::move(nearestFirst)] {
        const KorDSMPreviewSubject& subject = m_preview.subject();
        const RowRef style = {kTableDetailStyle, subject.style};
        const SourceId source = subject.source;
        const auto goToFieldOf = [&](const Cells& cells) {
            return std::ranges::any_of(cells.columns, [&](int column) {
                return m_navigation.goToField(source, cells.row, column, style);
            });
        };
        if (std::ranges::none_of(nearestFirst, goToFieldOf))
            m_navigation.goToField(source, nearestFirst.front().row, 0, style);
    });
}

void PreviewMakers::showMenu(std::optional<std::size_t> place, const QPoint& position) {
    QMenu menu;
    if (place && !m_isBefore()) {
        menu.addAction(toQt(Prompts::dsm(kMadeBy)), this, [this, place] { listMakers(*place); });
        QAction* why = menu.addAction(toQt(Prompts::dsm(kWhy)), this, [this, place] { listReasons(*place); });
        why->setEnabled(!m_preview.reasonsFor(*place).empty());
        menu.addSeparator();
    }
    PreviewView& view = m_pane.view();
    menu.addAction(toQt(Prompts::dsm(kFit)), &view, &PreviewView::fit)->setShortcut(Qt::Key_0);
    menu.addAction(toQt(Prompts::dsm(kActualSize)), &view, &PreviewView::actualSize)->setShortcut(Qt::Key_1);
    menu.addSeparator();
    menu.addActions(m_output.actions());
    menu.addSeparator();
    menu.addAction(toQt(Prompts::dsm(kHelp)), [] { CKorHelp::showTopic("_Style_Preview"); })
        ->setShortcut(Qt::Key_F1);
    KorMnemonics::give(menu);
    menu.exec(position);
}
