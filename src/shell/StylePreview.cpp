#include "shell/StylePreview.h"

#include "base/EditorSession.h"
#include "base/Translation.h"
#include "controls/KorButtonGroup.h"
#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "pages/KorDSMPage.h"
#include "pages/PartListEditor.h"
#include "services/KOSettings.h"
#include "services/KorResources.h"
#include "services/Prompts.h"
#include "session/KorDSMDrawingDifferences.h"
#include "shell/CommandHelp.h"
#include "shell/TreeSelection.h"
#include "shell/WhenFree.h"

#include <QAction>
#include <QApplication>
#include <QToolButton>

namespace {

constexpr int kButton = 2097; // and its picture
constexpr const char* kKey = "F9";
constexpr char kTopic[] = "_Style_Preview";
constexpr int kName = 900;
constexpr int kFirstUser = 916;  // "%s, which uses what is selected"
constexpr int kShowPart = 920;   // "Show %s"
constexpr int kStoredHead = 921; // "%s, as it is stored"
constexpr int kEqual = 922;
constexpr int kShowOrHide = 1166;

constexpr int kTypingPause = 150; // milliseconds
constexpr int kOfferPause = 400;
constexpr int kAheadPause = 500;
constexpr int kAheadStep = 20;

QString joined(const std::vector<KorString>& texts) {
    QStringList all;
    for (const KorString& text : texts)
        all << toQt(text);
    return all.join(QStringLiteral("\n"));
}

} // namespace

StylePreview::StylePreview(QWidget& window, KorVerticalSplitter& splitter, KorButtonGroup& strip,
                           TreeSelection& selection, Navigation& navigation)
    : m_window(window), m_strip(strip), m_selection(selection),
      m_preview(KorResources::folder() / "parts",
                KOSettings::getInstance().dataFolder() / "Shared" / "Support"),
      m_pane(new PreviewPane), m_ahead(new QTimer(m_pane)), m_place(window, splitter, *m_pane),
      m_commands(window, [this](int tool) { onTool(tool); }),
      m_output(window, m_pane->view(),
               [this](bool isSheet) { return m_preview.pageOf(isBefore(), isSheet); }),
      m_makers(m_preview, *m_pane, navigation, m_output, [this] { return isBefore(); }) {
    makeCommands();
    m_typing.setSingleShot(true);
    m_typing.setInterval(kTypingPause);
    connect(&m_typing, &QTimer::timeout, this, &StylePreview::follow);
    m_offering.setSingleShot(true);
    m_offering.setInterval(kOfferPause);
    connect(&m_offering, &QTimer::timeout, this, &StylePreview::offerPart);
    m_ahead->setObjectName("lookAhead");
    m_ahead->setSingleShot(true);
    connect(m_ahead, &QTimer::timeout, this, EditorSession::current().forLater([this] { lookAhead(); }));
    connect(&m_selection, &TreeSelection::changed, this, &StylePreview::follow);
    connect(&m_selection, &TreeSelection::subjectsChanged, this, &StylePreview::follow);
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget*, const QWidget* now) { followFocus(now); });
    connect(m_pane, &PreviewPane::toolPressed, this, &StylePreview::onTool);
    connect(m_pane, &PreviewPane::partChosen, this,
            [this](const QString& name) { onPartChosen(name.toStdString()); });
    connect(m_pane, &PreviewPane::linkFollowed, this, [this] { onPartChosen(m_offered); });
    connect(m_pane, &PreviewPane::compared, this, &StylePreview::compare);
    connect(&m_output, &DrawingOutput::told, m_pane,
            [this](const QString& sentence) { m_pane->setNote(sentence); });
    m_pane->setOutput(m_output.actions());
    m_output.setEnabled(false);
    m_preview.whenLeftOut([this] { follow(); });
    setShown(m_place.wasShown());
}

void StylePreview::makeCommands() {
    const QString text = toQt(Prompts::dsm(kName));
    m_strip.addButton(kButton, fromQt(text), KorPictures::bitmap(kButton));
    m_strip.setButtonText(kButton, fromQt(text), QKeySequence(QLatin1String(kKey)));
    m_strip.button(kButton)->setCheckable(true);
    auto* action = new QAction(KorPictures::bitmap(kButton), toQt(Prompts::dsm(kShowOrHide)), &m_strip);
    action->setShortcut(QKeySequence(QLatin1String(kKey)));
    connect(action, &QAction::triggered, m_strip.button(kButton), &QToolButton::click);
    m_window.addAction(action);
    for (QObject* command : std::initializer_list<QObject*>{action, m_strip.button(kButton)})
        CommandHelp::setPlace(*command, QLatin1String(kTopic));
    connect(&m_strip, &KorButtonGroup::buttonPressed, this, [this] {
        setShown(!isShown());
        m_place.remember();
    });
}

void StylePreview::setShown(bool shown) {
    m_strip.button(kButton)->setChecked(shown);
    const bool isOther = m_place.setShown(shown);
    if (!isOther)
        return;
    m_commands.setEnabled(shown, false);
    if (!shown) {
        m_ahead->stop();
        m_preview.rest();
        m_output.setEnabled(false);
        compare(0);
        m_pane->view().show(nullptr);
        m_pane->hideList();
        showEffects();
        return;
    }
    follow();
}

void StylePreview::onTool(int tool) {
    PreviewView& view = m_pane->view();
    constexpr double kZoom = 1.5;
    switch (tool) {
    case PreviewPane::kFit:
        return view.fit();
    case PreviewPane::kActualSize:
        return view.actualSize();
    case PreviewPane::kZoomIn:
        return view.zoomBy(kZoom);
    case PreviewPane::kZoomOut:
        return view.zoomBy(1 / kZoom);
    case PreviewPane::kBefore:
        return compare(isBefore() ? 0 : 1);
    default:
        m_place.turn();
    }
}

void StylePreview::onPartChosen(const std::string& name) {
    m_preview.choosePart(name);
    m_pane->view().fit();
    follow();
}

void StylePreview::connectPages() {
    for (KorDSMPage* page : m_window.findChildren<KorDSMPage*>())
        connect(page, &KorDSMPage::fieldChanged, this, [this] { followFocus(QApplication::focusWidget()); });
}

void StylePreview::follow() {
    if (!isShown() || std::exchange(m_isDue, true))
        return;
    QTimer::singleShot(0, this, [this] {
        whenFree(this, [this] {
            m_isDue = false;
            if (isShown())
                update();
        });
    });
}

void StylePreview::followTyping() {
    if (isShown())
        m_typing.start();
}

void StylePreview::update() {
    followFocus(QApplication::focusWidget());
    const auto typed = m_typing.isActive() ? std::nullopt : m_field;
    const bool isOther = m_preview.update(m_selection.subject(), typed);
    if (!m_pane->hasParts()) {
        std::vector<std::pair<std::string, KorString>> parts;
        for (const KorDSMSampleParts::Entry& entry : m_preview.parts().all())
            parts.emplace_back(entry.name, translated(entry.part->name));
        m_pane->setParts(parts);
    }
    const bool wasBefore = isBefore();
    m_share = m_preview.isPending() ? m_share : 0;
    m_pane->setComparison(m_preview.isPending(), m_share);
    m_commands.setEnabled(true, m_preview.isPending());
    m_output.setEnabled(m_preview.drawing() != nullptr);
    m_drawings += isOther;
    m_stored = nullptr; // others may have stored something that shows only there
    if (isOther || wasBefore)
        showDrawing();
    showHead();
    showFoot();
    if (std::exchange(m_shownRow, m_preview.subject().row) != m_preview.subject().row)
        showRecord();
    showEffects();
    markField();
    showCompared();
    m_ahead->start(kAheadPause);
}

// What lists of the page say of the part.
void StylePreview::showEffects() {
    if (const KorDSMPage* page = KorDSMPage::currentPage())
        for (PartListEditor* list : page->findChildren<PartListEditor*>())
            list->showEffect();
    const QWidget* focus = QApplication::focusWidget();
    if (m_field && focus)
        followFocus(focus);
}

void StylePreview::showHead() {
    const KorDSMPreviewSubject& subject = m_preview.subject();
    const KorString style = m_preview.styleName();
    m_pane->setPart(m_preview.partName());
    m_pane->view().setEmptyText(whyBlank(isBefore(), m_pane->view().drawing()));
    m_pane->setHead(subject.style == 0     ? QString()
                    : isBefore()           ? toQt(KorString::format(Prompts::dsm(kStoredHead), {style}))
                    : subject.isBelowStyle ? toQt(style)
                                           : toQt(KorString::format(Prompts::dsm(kFirstUser), {style})));
}

void StylePreview::showDrawing() {
    m_pane->view().show(isBefore() ? m_preview.drawStored() : m_preview.drawing());
    m_pane->hideList();
    showFoot();
    if (isBefore())
        m_pane->setNote(differencesTo(m_pane->view().drawing()));
}

void StylePreview::showFoot() {
    QString schematic;
    QStringList notes;
    const KorString trial = m_preview.trialText();
    if (const Drawing* drawing = m_pane->view().drawing()) {
        schematic = toQt(schematicOf(*drawing, trial));
        for (const std::string& note : drawing->notes)
            notes << QString::fromStdString(note);
    }
    for (const std::string& problem : m_preview.parts().problems())
        notes << QString::fromStdString(problem);
    m_pane->setFoot(schematic, notes, !trial.isEmpty());
}

// A selected style is shown whole, and of what it consists of where that acts.
void StylePreview::showRecord() {
    const KorDSMPreviewSubject& subject = m_preview.subject();
    const Box2 box = subject.row.table == kTableDetailStyle ? Box2() : m_preview.boxOf(subject.row);
    m_pane->view().zoomTo(box);
}

void StylePreview::followFocus(const QWidget* focus) {
    // Another program, or the preview itself, does not change what is looked at.
    if (!isShown() || !focus || m_pane->isAncestorOf(focus))
        return;
    const KorDSMPage* page = KorDSMPage::currentPage();
    const auto field =
        page && page->isAncestorOf(focus) ? page->fieldAt(*focus) : std::optional<FieldPlace>();
    const bool isSame = m_field && field && m_field->row == field->row && m_field->column == field->column &&
                        m_field->objects == field->objects;
    m_field = field;
    if (!isSame)
        markField();
}

void StylePreview::markField() {
    if (isBefore() || !m_preview.drawing())
        return;
    const bool isCount = m_field && m_field->column == 0;
    const auto places = isCount   ? m_preview.placesOf(m_field->objects)
                        : m_field ? m_preview.governedBy(m_field->row, m_field->column)
                                  : PreviewView::Places();
    m_pane->view().mark(places);
    if (m_share > 0)
        return; // what became different is told there
    if (m_field && !isCount && places.empty())
        return explainNothing();
    m_pane->setNote({});
}

void StylePreview::explainNothing() {
    m_offered.clear();
    m_pane->setNote(toQt(m_preview.whyNothing(m_field->row, m_field->column)));
    m_offering.start();
}

// It takes drawings of the other parts, for which a user who goes on does not wait.
void StylePreview::offerPart() {
    if (KorDSMBusy::isBusy() || !isShown() || !m_field || !m_pane->view().marked().empty())
        return;
    m_offered = m_preview.partThatShows(m_field->row, m_field->column);
    if (const auto* found = m_preview.parts().find(m_offered))
        m_pane->setNote(toQt(m_preview.whyNothing(m_field->row, m_field->column)),
                        toQt(KorString::format(Prompts::dsm(kShowPart), {translated(found->part->name)})));
}

// One style at a time, so that nobody who goes on waits for more than that.
void StylePreview::lookAhead() {
    if (!isShown())
        return;
    if (KorDSMBusy::isBusy() || m_isDue || m_typing.isActive())
        m_ahead->start(kAheadPause);
    else if (m_preview.lookAhead())
        m_ahead->start(kAheadStep);
}

void StylePreview::compare(double share) {
    const bool wasBefore = isBefore();
    m_share = m_preview.isPending() ? share : 0;
    m_pane->setComparison(m_preview.isPending(), m_share);
    if (wasBefore != isBefore()) {
        showDrawing();
        showHead();
        markField();
    }
    showCompared();
}

// What is stored, in the left part of the picture.
void StylePreview::showCompared() {
    const bool isPart = m_share > 0 && !isBefore();
    const bool wasPart = std::exchange(m_isDivided, isPart);
    if (!isPart) {
        m_stored = nullptr;
    } else if (!m_stored) {
        m_stored = m_preview.drawStored();
        m_differences = differencesTo(m_stored.get());
    }
    m_pane->view().compareWith(m_stored, m_share, whyBlank(true, m_stored.get()));
    if (isPart)
        m_pane->setNote(m_differences);
    else if (wasPart)
        markField(); // it has the note again
}

// What stands in the place of a drawing that has nothing to be seen.
QString StylePreview::whyBlank(bool stored, const Drawing* drawn) const {
    if (drawn && !drawn->all().empty())
        return {};
    QStringList lines = {toQt(m_preview.whyBlank(stored))};
    if (drawn && !drawn->style.empty()) // where it is not there, that is all
        for (const std::string& note : drawn->notes)
            lines << QString::fromStdString(note);
    return lines.join(u'\n');
}

// What became different since it was stored, in words; where that is blank, first why.
QString StylePreview::differencesTo(const Drawing* stored) const {
    std::vector<KorString> words;
    if (stored && m_preview.drawing())
        words = KorDSMDrawingDifferences::wordsOf(*stored, *m_preview.drawing());
    if (words.empty())
        return toQt(Prompts::dsm(kEqual));
    if (stored->all().empty())
        words.insert(words.begin(), m_preview.whyBlank(true));
    return joined(words);
}
