#include "shell/SearchCommand.h"

#include "controls/KorButtonGroup.h"
#include "controls/KorButtonGroupMenu.h"
#include "controls/KorControls.h"
#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "dialogs/KorDSMDialogSearch.h"
#include "model/KorDSMBusy.h"
#include "model/KorDSMFamilies.h"
#include "services/Prompts.h"
#include "session/KorDSMItemSource.h"
#include "session/KorDSMSources.h"
#include "session/KorDSMUnusedRecords.h"
#include "session/KorDSMValueText.h"
#include "session/KorDSMWhereUsed.h"
#include "shell/CommandHelp.h"
#include "shell/FieldFlash.h"
#include "shell/ItemMenu.h"
#include "shell/Navigation.h"
#include "shell/Refusal.h"
#include "shell/WhenFree.h"

#include <QAction>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

namespace {

constexpr char kTopic[] = "_KorDSMDialogSearch";
constexpr int kButton = 2420; // and its picture
constexpr int kName = 1000;
constexpr int kPage = 1006;
constexpr int kCommand = 1007;
constexpr int kSection = 1012;
constexpr int kOption = 1014;
constexpr int kEntry = 1016;
constexpr int kNotShown = 1465; // "Nothing uses "%s", and it has no page of its own: ..."

constexpr const char* kKeys[] = {"Ctrl+K", "Ctrl+Shift+F"};

} // namespace

SearchCommand::SearchCommand(QWidget& window, KorDSMDataStructure& structure, Navigation& navigation,
                             RightSide& rightSide, TreeSelection& selection, ItemMenu& menu,
                             KorButtonGroupMenu& options, KorButtonGroup& strip)
    : m_window(window), m_structure(structure), m_navigation(navigation), m_rightSide(rightSide),
      m_selection(selection), m_menu(menu), m_options(options) {
    const QKeySequence key(QString::fromLatin1(kKeys[0]));
    strip.addButton(kButton, Prompts::dsm(kName), KorPictures::bitmap(kButton));
    strip.setButtonText(kButton, Prompts::dsm(kName), key);
    CommandHelp::setPlace(*strip.button(kButton), QLatin1String(kTopic));
    connect(strip.button(kButton), &QToolButton::clicked, this, waiting(this, &SearchCommand::open));
    QAction* entry =
        m_options.checkMenu()->addAction(KorPictures::bitmap(kButton), toQt(Prompts::dsm(kEntry)));
    CommandHelp::setPlace(*entry, QLatin1String(kTopic));
    entry->setShortcuts({key, QKeySequence(QString::fromLatin1(kKeys[1]))});
    connect(entry, &QAction::triggered, this, waiting(this, &SearchCommand::open));
    m_window.addAction(entry);
}

void SearchCommand::open() {
    RightSide::finishEditing();
    QMenu menu;
    SearchTerms terms;
    addCommands(terms, menu);
    addSections(terms);
    addPages(terms);
    terms.addTopics();
    const std::optional<KorDSMSearchHit> hit = ask(terms);
    if (hit && hit->row.key > 0 && isNowhere(*hit))
        refuse(&m_window, KorString::format(Prompts::dsm(kNotShown),
                                            {KorDSMValueText::shortName(
                                                KorDSMUnusedRecords::nameOf(hit->sourceId, hit->row))}));
    else if (hit && hit->row.key > 0)
        goTo(*hit);
    else if (hit)
        terms.act(hit->term);
}

bool SearchCommand::isNowhere(const KorDSMSearchHit& hit) {
    const KorDSMBusy busy;
    return !KorDSMWhereUsed::findEditor(m_structure, hit.sourceId, hit.row) &&
           !KorDSMUnusedRecords::editorOf(m_structure, hit.sourceId, hit.row);
}

std::optional<KorDSMSearchHit> SearchCommand::ask(const SearchTerms& terms) {
    KorDSMSearch search(here(), terms.terms());
    KorDSMDialogSearch dialog(
        search, [&terms](const KorDSMSearchHit& hit) { return terms.picture(hit.term); }, m_typed, &m_window);
    dialog.exec();
    m_typed = dialog.typed();
    return dialog.chosen();
}

KorDSMSearch::Here SearchCommand::here() const {
    const KorDSMDatabaseItem* item = m_selection.item();
    SourceId source = KorDSMItemSource::sourceOf(item);
    if (source.dsn == KorDSNDefinitions::kLast)
        if (const auto* current = KorDSMSources::current(m_structure, m_structure.getSelectedSection()))
            source = KorDSMItemSource::sourceOf(current);
    return {source, item && item->record() ? RowRef{item->tableType(), item->recordKey()} : RowRef()};
}

void SearchCommand::addCommands(SearchTerms& terms, QMenu& menu) {
    m_menu.fill(menu);
    terms.add(menu.actions(), kCommand);
    terms.add(m_window.actions(), kCommand);
    terms.add(m_options.checkMenu()->actions(), kOption);
    for (const int number : {1, 2, 3})
        if (auto* button = KorControls::find<QPushButton>(&m_window, number))
            terms.add({eSearchKind::kCommand,
                       fromQt(button->text().remove(u'&')),
                       Prompts::dsm(kCommand),
                       {},
                       {},
                       button->isEnabled()},
                      {}, [button] { button->click(); });
}

void SearchCommand::addSections(SearchTerms& terms) {
    for (const KorDSMSection& section : KorDSMFamilies::sections())
        terms.add({eSearchKind::kPage, Prompts::ups(section.namePrompt), Prompts::dsm(kSection)},
                  KorPictures::bitmap(section.bitmap), [this, wanted = section.section] {
                      m_navigation.switchSection(wanted);
                      m_navigation.focusTree();
                  });
}

void SearchCommand::addPages(SearchTerms& terms) {
    const KorDSMSearch::Here place = here();
    for (const KorDSMFamily& family : KorDSMFamilies::all())
        for (const int number : family.pages) {
            const KorDSMPage* page = m_rightSide.pages().page(number);
            const auto [source, row] = KorDSMSearch::rowOf(place, family.table);
            if (!page)
                continue;
            KorDSMSearchTerm term{eSearchKind::kPage, page->title(), Prompts::dsm(kPage),
                                  KorDSMValueText::tableCaption(*findTable(family.table))};
            term.isOffered = row.key > 0;
            terms.add(std::move(term), KorPictures::icon(KorDSMDefines::iconResource(family.icon)),
                      [this, source = source, row = row, number] { goToPage(source, row, number); });
        }
}

void SearchCommand::goToPage(SourceId source, RowRef row, int templateId) {
    m_navigation.goToField(source, row, 0);
    m_rightSide.showPage(templateId);
    m_rightSide.focusPage();
}

void SearchCommand::goTo(const KorDSMSearchHit& hit) {
    if (hit.column == 0)
        m_navigation.goToRecord(hit.sourceId, hit.row);
    const KorDSMDatabaseItem* item = m_selection.item();
    const bool isThere = hit.column == 0 && item && item->record() && item->tableType() == hit.row.table &&
                         item->recordKey() == hit.row.key;
    if (isThere)
        return m_navigation.focusTree();
    // What stands in no tree is edited where it is used.
    if (!m_navigation.goToField(hit.sourceId, hit.row, hit.column == 0 ? 1 : hit.column))
        return m_navigation.focusTree();
    if (QWidget* field = m_window.focusWidget())
        FieldFlash::show(*field);
}
