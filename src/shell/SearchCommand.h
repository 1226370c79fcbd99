#pragma once

#include "shell/SearchTerms.h"

#include <QObject>

#include <optional>

class ItemMenu;
class KorButtonGroup;
class KorButtonGroupMenu;
class KorDSMDataStructure;
class Navigation;
class QMenu;
class RightSide;
class TreeSelection;

/// Finds anything and goes there: to a record, to a field, to a page, to a topic, or does what was found.
class SearchCommand : public QObject {
    Q_OBJECT

public:
    /// Puts a button into `strip` and an entry into the menu of `options`. All must outlive the object.
    SearchCommand(QWidget& window, KorDSMDataStructure& structure, Navigation& navigation,
                  RightSide& rightSide, TreeSelection& selection, ItemMenu& menu, KorButtonGroupMenu& options,
                  KorButtonGroup& strip);

    void open();

private:
    /// What the user chose; nothing where the search was left.
    std::optional<KorDSMSearchHit> ask(const SearchTerms& terms);
    void addCommands(SearchTerms& terms, QMenu& menu);
    void addSections(SearchTerms& terms);
    void addPages(SearchTerms& terms);
    KorDSMSearch::Here here() const;
    bool isNowhere(const KorDSMSearchHit& hit);
    void goTo(const KorDSMSearchHit& hit);
    void goToPage(SourceId source, RowRef row, int templateId);

    QWidget& m_window;
    KorDSMDataStructure& m_structure;
    Navigation& m_navigation;
    RightSide& m_rightSide;
    TreeSelection& m_selection;
    ItemMenu& m_menu;
    KorButtonGroupMenu& m_options;
    KorString m_typed; // what was looked for last
};
