#include "controls/KorMnemonics.h"

#include "controls/KorControls.h"
#include "controls/KorTemplates.h"

#include <QAbstractButton>
#include <QAction>
#include <QGroupBox>
#include <QKeySequence>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>
#include <QVariant>

#include <algorithm>
#include <functional>

namespace {

// The text with the letter that it was given here, and without.
constexpr char kGivenProperty[] = "mnemonic";
constexpr int kOkButton = 1;
constexpr int kCancelButton = 2;

/// Places of letters in a text, the better ones first.
std::vector<qsizetype> placesIn(const QString& text) {
    std::vector<qsizetype> places;
    std::vector<qsizetype> inner;
    const qsizetype key = text.indexOf(u'\t');
    for (qsizetype i = 0; i < (key < 0 ? text.size() : key); ++i)
        if (text[i].isLetterOrNumber())
            (i == 0 || !text[i - 1].isLetterOrNumber() ? places : inner).push_back(i);
    places.insert(places.end(), inner.begin(), inner.end());
    return places;
}

/// Each text looks for a letter, and where all of its own are taken another text moves to one that is free.
class Choice {
public:
    Choice(const std::vector<QString>& texts, const QString& taken) : m_taken(taken.toUpper()) {
        for (const QString& text : texts) {
            QString& letters = m_letters.emplace_back();
            for (const qsizetype place : placesIn(text))
                if (const QChar letter = text[place].toUpper(); !m_taken.contains(letter))
                    letters += letter;
        }
        m_chosen.resize(texts.size());
        for (std::size_t i = 0; i < texts.size(); ++i) {
            QString tried;
            find(i, tried);
        }
    }
    const std::vector<QChar>& chosen() const { return m_chosen; }

private:
    bool find(std::size_t text, QString& tried) {
        for (const QChar letter : m_letters[text])
            if (std::ranges::find(m_chosen, letter) == m_chosen.end())
                return take(text, letter);
        for (const QChar letter : m_letters[text]) {
            if (tried.contains(letter))
                continue;
            tried += letter;
            const auto owner =
                static_cast<std::size_t>(std::ranges::find(m_chosen, letter) - m_chosen.begin());
            if (find(owner, tried))
                return take(text, letter);
        }
        return false;
    }
    bool take(std::size_t text, QChar letter) {
        m_chosen[text] = letter;
        return true;
    }

    QString m_taken;
    std::vector<QString> m_letters;
    std::vector<QChar> m_chosen;
};

QString textOf(const QObject& object) {
    if (const auto* label = qobject_cast<const QLabel*>(&object))
        return label->text();
    if (const auto* button = qobject_cast<const QAbstractButton*>(&object))
        return button->text();
    if (const auto* box = qobject_cast<const QGroupBox*>(&object))
        return box->title();
    return static_cast<const QAction&>(object).text();
}

void setTextOf(QObject& object, const QString& text) {
    if (textOf(object) == text)
        return;
    if (auto* label = qobject_cast<QLabel*>(&object))
        label->setText(text);
    else if (auto* button = qobject_cast<QAbstractButton*>(&object))
        button->setText(text);
    else if (auto* box = qobject_cast<QGroupBox*>(&object))
        box->setTitle(text);
    else
        static_cast<QAction&>(object).setText(text);
}

QString letterOf(const QString& text) {
    const QString key = QKeySequence::mnemonic(text).toString(QKeySequence::PortableText);
    return key.isEmpty() ? QString() : key.back();
}

/// The text before it was given a letter.
QString ungiven(const QObject& object) {
    const QString text = textOf(object);
    const QStringList given = object.property(kGivenProperty).toStringList();
    return !given.isEmpty() && given.front() == text ? given.back() : text;
}

/// Gives letters to all, in the order of their weight. Texts that name their own letter are passed over.
void giveTo(const std::vector<QObject*>& objects, QString taken) {
    std::vector<QObject*> open;
    std::vector<QString> texts;
    for (QObject* object : objects) {
        const QString text = ungiven(*object);
        if (const QString letter = letterOf(text); !letter.isEmpty()) {
            taken += letter;
            continue;
        }
        open.push_back(object);
        texts.push_back(text);
    }
    const std::vector<QChar> letters = KorMnemonics::choose(texts, taken);
    for (std::size_t i = 0; i < open.size(); ++i) {
        QString text = texts[i];
        const std::vector<qsizetype> places = placesIn(text);
        const auto place =
            std::ranges::find_if(places, [&](qsizetype at) { return text[at].toUpper() == letters[i]; });
        if (!letters[i].isNull() && place != places.end())
            text.insert(*place, u'&');
        setTextOf(*open[i], text);
        open[i]->setProperty(kGivenProperty, QStringList{text, texts[i]});
    }
}

// Some labels are never seen: they say the name of what stands there.
bool isNameAlone(const QLabel& label) {
    // What a layout has not shown yet is hidden, too, but not because somebody said so.
    return label.testAttribute(Qt::WA_WState_ExplicitShowHide) && label.isHidden() &&
           !label.buddy()->isHidden();
}

bool isReached(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        return label->buddy() && !isNameAlone(*label) && !Qt::mightBeRichText(label->text());
    const auto* tool = qobject_cast<const QToolButton*>(&widget);
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    const int number = KorControls::id(&widget);
    return button && !button->text().isEmpty() && number != kOkButton && number != kCancelButton &&
           (!tool || tool->toolButtonStyle() != Qt::ToolButtonIconOnly);
}

bool isCommand(const QWidget* widget) {
    return qobject_cast<const QPushButton*>(widget) || qobject_cast<const QToolButton*>(widget);
}

/// What stands in `root`, without pages that have letters of their own; or all that is seen there but `left`.
struct Wanted {
    const QWidget* left = nullptr;
    bool isSeen = false;
};

void collect(const QWidget& root, const Wanted& wanted, std::vector<QWidget*>& found) {
    for (QObject* child : root.children()) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (!widget || widget->isWindow() ||
            (wanted.isSeen ? widget->isHidden() || widget == wanted.left
                           : KorTemplates::templateOf(widget) != 0))
            continue;
        if (isReached(*widget))
            found.push_back(widget);
        const auto before = static_cast<std::ptrdiff_t>(found.size());
        collect(*widget, wanted, found);
        const auto* frame = qobject_cast<QGroupBox*>(widget);
        if (frame && !frame->title().isEmpty() && std::all_of(found.begin() + before, found.end(), isCommand))
            found.push_back(widget);
    }
}

} // namespace

std::vector<QChar> KorMnemonics::choose(const std::vector<QString>& texts, const QString& taken) {
    return Choice(texts, taken).chosen();
}

void KorMnemonics::give(QWidget& part) {
    QString taken;
    if (const QWidget* window = part.window(); window != &part) {
        std::vector<QWidget*> others;
        collect(*window, {&part, true}, others);
        for (const QWidget* other : others)
            taken += letterOf(textOf(*other));
    }
    std::vector<QWidget*> own;
    collect(part, {}, own);
    std::ranges::stable_partition(own, [&part](const QWidget* each) { return each->isVisibleTo(&part); });
    giveTo({own.begin(), own.end()}, taken);
}

void KorMnemonics::give(QMenu& menu) {
    std::vector<QObject*> entries;
    for (QAction* action : menu.actions()) {
        if (action->menu())
            give(*action->menu());
        if (!action->isSeparator())
            entries.push_back(action);
    }
    giveTo(entries, {});
}

QString KorMnemonics::plain(const QString& text) {
    QString read;
    for (qsizetype i = 0; i < text.size(); ++i)
        if (text[i] != u'&' || ++i < text.size())
            read += text[i];
    return read;
}

QString KorMnemonics::literal(QString text) {
    return text.replace(u'&', QStringLiteral("&&"));
}

void KorMnemonics::setText(QLabel& label, const QString& text) {
    if (plain(label.text()) != text)
        label.setText(text);
}
