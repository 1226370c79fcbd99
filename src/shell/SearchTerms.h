#pragma once

#include "session/KorDSMSearch.h"

#include <QIcon>

#include <functional>
#include <set>

class QAction;
class QWidget;

/// What the search finds besides records, each with its picture and what it does.
class SearchTerms {
public:
    using Act = std::function<void()>;

    void add(KorDSMSearchTerm term, const QIcon& picture, Act act);
    /// The actions with their keys, those of their menus included, each of a text once; what they are is said
    /// by prompt "DSM" `kind`.
    void add(const QList<QAction*>& actions, int kind, const KorString& path = {});
    /// All topics of the help.
    void addTopics();

    const std::vector<KorDSMSearchTerm>& terms() const { return m_terms; }
    QIcon picture(std::size_t term) const { return m_pictures[term]; }
    void act(std::size_t term) const { m_acts[term](); }

private:
    std::vector<KorDSMSearchTerm> m_terms;
    std::set<std::pair<KorString, KorString>> m_actions; ///< that are there, by text and path
    std::vector<QIcon> m_pictures;
    std::vector<Act> m_acts;
};
