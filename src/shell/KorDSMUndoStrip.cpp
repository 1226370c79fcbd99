#include "shell/KorDSMUndoStrip.h"

#include "controls/KorButtonGroup.h"
#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "session/KorDSMUndo.h"

#include <QMenu>
#include <QToolButton>

namespace {

constexpr int kUndo = 1;
constexpr int kRedo = 2;
constexpr int kUndoBitmap = 1611;
constexpr int kRedoBitmap = 1612;
constexpr std::size_t kMostNamed = 20;

} // namespace

KorDSMUndoStrip::KorDSMUndoStrip(KorButtonGroup* buttons) : QObject(buttons), m_buttons(buttons) {
    addButton(kUndo, kUndoBitmap, &KorDSMUndoStrip::undoWanted);
    addButton(kRedo, kRedoBitmap, &KorDSMUndoStrip::redoWanted);
    connect(m_buttons, &KorButtonGroup::buttonPressed, this,
            [this](int id) { id == kUndo ? Q_EMIT undoWanted(1) : Q_EMIT redoWanted(1); });
    update();
}

void KorDSMUndoStrip::addButton(int id, int bitmap, Wanted wanted) {
    m_buttons->addButton(id, {}, KorPictures::bitmap(bitmap));
    auto* menu = new QMenu(m_buttons);
    connect(menu, &QMenu::aboutToShow, this, [this, menu, id, wanted] {
        fillMenu(*menu, id == kUndo ? KorDSMUndo::undoSteps(kMostNamed) : KorDSMUndo::redoSteps(kMostNamed),
                 wanted);
    });
    m_buttons->setButtonMenu(id, menu);
}

void KorDSMUndoStrip::fillMenu(QMenu& menu, const std::vector<KorString>& steps, Wanted wanted) {
    menu.clear();
    int count = 0;
    for (const KorString& step : steps) {
        // An ampersand in a record's name is no mnemonic.
        QAction* action = menu.addAction(toQt(step).replace(u'&', QStringLiteral("&&")));
        connect(action, &QAction::triggered, this,
                [this, wanted, number = ++count] { (this->*wanted)(number); });
    }
}

void KorDSMUndoStrip::update() {
    m_buttons->enableButton(kUndo, KorDSMUndo::canUndo());
    m_buttons->enableButton(kRedo, KorDSMUndo::canRedo());
    const auto name = [this](int id, const KorString& text, const char* key) {
        QToolButton* button = m_buttons->button(id);
        button->setAccessibleName(toQt(text));
        button->setToolTip(toQt(text) +
                           QStringLiteral(" (%1)").arg(QKeySequence(key).toString(QKeySequence::NativeText)));
    };
    name(kUndo, KorDSMUndo::undoText(), "Ctrl+Z");
    name(kRedo, KorDSMUndo::redoText(), "Ctrl+Shift+Z");
}
