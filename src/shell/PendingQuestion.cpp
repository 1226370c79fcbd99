#include "shell/PendingQuestion.h"

#include "controls/KorQt.h"
#include "services/Prompts.h"

#include <QMessageBox>
#include <QPushButton>
#include <QTextDocument>

namespace {

constexpr std::size_t kMostShown = 6;
constexpr std::array kRoles = {QMessageBox::AcceptRole, QMessageBox::DestructiveRole,
                               QMessageBox::RejectRole};

QString listOf(const std::vector<KorString>& steps, std::size_t most) {
    QStringList lines;
    for (std::size_t i = 0; i < steps.size() && i < most; ++i)
        lines << toQt(steps[i]);
    if (steps.size() > most)
        lines << QStringLiteral("…");
    return lines.join('\n');
}

} // namespace

int askAboutChanges(QWidget* parent, const KorString& caption, const KorString& question,
                    const std::vector<KorString>& steps, const std::array<int, 3>& buttons) {
    QMessageBox box(QMessageBox::Question, toQt(caption), toQt(question), QMessageBox::NoButton, parent);
    box.setInformativeText(Qt::convertFromPlainText(listOf(steps, kMostShown), Qt::WhiteSpaceNormal));
    if (steps.size() > kMostShown)
        box.setDetailedText(listOf(steps, steps.size()));
    std::array<QPushButton*, 3> made{};
    for (std::size_t i = 0; i < made.size(); ++i)
        made[i] = box.addButton(toQt(Prompts::dsm(buttons[i])), kRoles[i]);
    box.setDefaultButton(made.front());
    box.setEscapeButton(made.back());
    box.exec();
    for (std::size_t i = 0; i < made.size(); ++i)
        if (box.clickedButton() == made[i])
            return static_cast<int>(i);
    return static_cast<int>(made.size()) - 1;
}
