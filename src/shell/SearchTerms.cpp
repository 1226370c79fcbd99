#include "shell/SearchTerms.h"

#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "services/CKorHelp.h"
#include "services/Prompts.h"

#include <QAction>
#include <QMenu>
#include <QPointer>
#include <QRegularExpression>

namespace {

constexpr int kTopic = 1008;
constexpr int kHelpBitmap = 1050;

// The text as it is read: without the mark of its key, the key itself and the dots of a dialog that follows.
KorString textOf(const QAction& action) {
    QString text = action.text().section(u'\t', 0, 0);
    text.remove(QRegularExpression(QStringLiteral("&(?!&)| ?…$")));
    return fromQt(text);
}

} // namespace

void SearchTerms::add(KorDSMSearchTerm term, const QIcon& picture, Act act) {
    m_terms.push_back(std::move(term));
    m_pictures.push_back(picture);
    m_acts.push_back(std::move(act));
}

void SearchTerms::add(const QList<QAction*>& actions, int kind, const KorString& path) {
    for (QAction* action : actions) {
        const KorString text = textOf(*action);
        if (action->menu()) {
            add(action->menu()->actions(), kind, text);
            continue;
        }
        if (action->isSeparator() || text.isEmpty() || !m_actions.insert({text, path}).second)
            continue;
        const KorString key = fromQt(action->shortcut().toString(QKeySequence::NativeText));
        KorDSMSearchTerm term{eSearchKind::kCommand, text, Prompts::dsm(kind), path.isEmpty() ? key : path};
        term.isOffered = action->isEnabled();
        if (!path.isEmpty())
            term.alsoCalled = {path + ": " + text}; // the word that leads to it may be that of its menu
        add(std::move(term), action->icon(), [alive = QPointer<QAction>(action)] {
            if (alive)
                alive->trigger();
        });
    }
}

void SearchTerms::addTopics() {
    for (CKorHelp::Topic& topic : CKorHelp::topics())
        add({eSearchKind::kTopic, topic.title, Prompts::dsm(kTopic), {}, std::move(topic.others)},
            KorPictures::bitmap(kHelpBitmap), [name = topic.name] { CKorHelp::showTopic(name); });
}
