#include "pages/PartListCommands.h"

#include "controls/KorQt.h"
#include "pages/PartClipboard.h"
#include "pages/ViewQuestion.h"
#include "services/Prompts.h"
#include "session/KorDSMCopiedRows.h"
#include "session/KorDSMValueText.h"

#include <QMessageBox>
#include <QPushButton>

#include <algorithm>
#include <limits>

namespace {

using List = KorDSMEditedList;

constexpr int kAll = std::numeric_limits<int>::max() / 2;

constexpr int kPaste = 578;
constexpr int kNothingFits = 1030;
constexpr int kHere = 760;      // "The copied rows use other records. ..."
constexpr int kEqual = 761;     // "..., with the same content: %s"
constexpr int kDifferent = 762; // "..., with another content: %s"
constexpr int kMissing = 763;   // "...: %s"
constexpr int kLinkOrCopy = 764;
constexpr int kLink = 765;
constexpr int kCopy = 766;

List::Outcome nothingDone(const List::Keys& rows) {
    return {{WriteResult::kUnchanged}, rows};
}

List::Outcome refused(const KorString& why, const List::Keys& rows) {
    return {{WriteResult::kFailed, why.toStdString()}, rows};
}

// How many, and which.
KorString countedNames(const std::vector<KorString>& names) {
    constexpr std::size_t kMostNamed = 12;
    KorString text = KorString::number(static_cast<std::int64_t>(names.size()));
    for (std::size_t i = 0; i < std::min(names.size(), kMostNamed); ++i)
        text = text + (i == 0 ? " (" : ", ") + KorDSMValueText::shortName(names[i]);
    return names.empty() ? text : text + (names.size() > kMostNamed ? ", …)" : ")");
}

KorString questionOf(const KorDSMCopiedRows::Comparison& comparison) {
    KorString text = Prompts::dsm(kHere) + "\n";
    if (comparison.equal > 0)
        text = text + "\n" + KorString::format(Prompts::dsm(kEqual), {KorString::number(comparison.equal)});
    for (const auto& [prompt, names] :
         {std::pair(kDifferent, &comparison.different), std::pair(kMissing, &comparison.missing)})
        if (!names->empty())
            text = text + "\n" + KorString::format(Prompts::dsm(prompt), {countedNames(*names)});
    return !comparison.different.empty() ? text + "\n\n" + Prompts::dsm(kLinkOrCopy) : text;
}

// What becomes of the records that the copied rows use and that are not here as they were; nothing when the
// user does not want to paste then.
std::optional<eNamesakes> askAbout(const KorDSMCopiedRows::Comparison& comparison, QWidget& window) {
    if (comparison.different.empty() && comparison.missing.empty())
        return eNamesakes::kUseTheirs;
    QMessageBox box(QMessageBox::Question, toQt(Prompts::dsm(kPaste)), toQt(questionOf(comparison)),
                    QMessageBox::NoButton, &window);
    box.setTextFormat(Qt::PlainText);
    QPushButton* link = !comparison.different.empty()
                            ? box.addButton(toQt(Prompts::dsm(kLink)), QMessageBox::AcceptRole)
                            : nullptr;
    QPushButton* copy = box.addButton(toQt(Prompts::dsm(kCopy)), QMessageBox::AcceptRole);
    box.addButton(toQt(Prompts::ups(33741)), QMessageBox::RejectRole);
    box.setDefaultButton(link ? link : copy);
    box.exec();
    if (box.clickedButton() == copy)
        return eNamesakes::kKeepBoth;
    return link && box.clickedButton() == link ? std::optional(eNamesakes::kUseTheirs) : std::nullopt;
}

using Copied = std::shared_ptr<KorDSMCopiedRows>;

template <typename Paste>
List::Outcome pasteBy(List& list, const List::Keys& rows, const Column* only, QWidget& window, Paste paste) {
    const Copied copied = PartClipboard::take(list);
    if (!copied)
        return refused(KorString::format(Prompts::dsm(kNothingFits),
                                         {KorDSMValueText::tableCaption(*findTable(list.recordTable()))}),
                       rows);
    const KorDSMCopiedRows::Comparison comparison =
        copied->compareWith(list.source(), only ? std::vector{only} : list.cells());
    if (!comparison.error.isEmpty())
        return refused(comparison.error, rows);
    const std::optional<eNamesakes> namesakes = askAbout(comparison, window);
    return namesakes ? paste(copied, *namesakes) : nothingDone(rows);
}

List::Outcome add(List& list, const List::Keys& rows, QWidget& window) {
    const std::int32_t after = rows.empty() ? 0 : rows.back();
    auto* views = dynamic_cast<KorDSMViewList*>(&list);
    if (!views)
        return list.add(after);
    if (const KorString full = list.whyFull(1); !full.isEmpty())
        return refused(full, rows);
    const std::optional<KorDSMViewList::Wish> wish = askForView(&window);
    return wish ? views->addView(after, *wish) : nothingDone(rows);
}

List::Outcome copy(List& list, const List::Keys& rows, QWidget&) {
    const KorString why = PartClipboard::put(list, rows);
    return why.isEmpty() ? nothingDone(rows) : refused(why, rows);
}

List::Outcome cut(List& list, const List::Keys& rows, QWidget&) {
    const KorString why = PartClipboard::put(list, rows);
    return why.isEmpty() ? list.remove(rows) : refused(why, rows);
}

List::Outcome paste(List& list, const List::Keys& rows, QWidget& window) {
    return pasteBy(list, rows, nullptr, window, [&](const Copied& copied, eNamesakes namesakes) {
        return list.paste(rows.empty() ? 0 : rows.back(), copied, namesakes);
    });
}

} // namespace

const std::vector<PartListCommand>& PartListCommand::all() {
    using Window = QWidget;
    static const std::vector<PartListCommand> commands = {
        {1, 1701, 571, Qt::Key_Insert, false, false, false, &add},
        {2, 1702, 572, Qt::Key_Delete, true, false, false,
         [](List& list, const List::Keys& rows, Window&) { return list.remove(rows); }},
        {3, 1043, 573, Qt::CTRL | Qt::Key_D, true, false, false,
         [](List& list, const List::Keys& rows, Window&) { return list.duplicate(rows); }},
        {8, 0, 576, Qt::CTRL | Qt::Key_X, true, false, false, &cut},
        {9, 0, 577, Qt::CTRL | Qt::Key_C, true, false, true, &copy},
        {10, 0, kPaste, Qt::CTRL | Qt::Key_V, false, false, false, &paste},
        {4, 1703, 574, Qt::ALT | Qt::Key_Up, true, true, false,
         [](List& list, const List::Keys& rows, Window&) { return list.moveBy(rows, -1); }},
        {5, 1704, 575, Qt::ALT | Qt::Key_Down, true, true, false,
         [](List& list, const List::Keys& rows, Window&) { return list.moveBy(rows, 1); }},
        {6, 0, 584, Qt::ALT | Qt::Key_Home, true, true, false,
         [](List& list, const List::Keys& rows, Window&) { return list.moveTo(rows, 0); }},
        {7, 0, 585, Qt::ALT | Qt::Key_End, true, true, false,
         [](List& list, const List::Keys& rows, Window&) { return list.moveTo(rows, kAll); }},
    };
    return commands;
}

List::Outcome PartListCommand::pasteColumn(List& list, const List::Keys& rows, const Column& column,
                                           QWidget& window) {
    return pasteBy(list, rows, &column, window, [&](const Copied& copied, eNamesakes namesakes) {
        return list.pasteCells(rows, column, copied, namesakes);
    });
}
