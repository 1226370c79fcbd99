#include "controls/KorControls.h"

#include "controls/KorLineEdit.h"
#include "controls/KorMFCGridCtrl.h"
#include "controls/KorTemplates.h"

#include <QAbstractButton>
#include <QHash>
#include <QPointer>
#include <QVariant>

namespace {

constexpr char kIdProperty[] = "controlId";

/// The controls of one root by number, kept as a child of the root.
class ControlTable : public QObject {
public:
    using QObject::QObject;
    QHash<int, QPointer<QWidget>> controls;
};

template <typename Visit>
void walk(const QWidget* root, const Visit& visit) {
    for (QObject* child : root->children()) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (!widget || widget->isWindow())
            continue;
        visit(widget);
        if (KorTemplates::templateOf(widget) == 0)
            walk(widget, visit);
    }
}

ControlTable& tableOf(const QWidget* root) {
    for (QObject* child : root->children())
        if (auto* table = dynamic_cast<ControlTable*>(child))
            return *table;
    return *new ControlTable(const_cast<QWidget*>(root));
}

} // namespace

int KorControls::id(const QWidget* control) {
    return control->property(kIdProperty).toInt();
}

void KorControls::setId(QWidget* control, int controlId) {
    control->setProperty(kIdProperty, controlId);
}

QWidget* KorControls::find(const QWidget* root, int controlId) {
    ControlTable& table = tableOf(root);
    if (QWidget* known = table.controls.value(controlId))
        return known;
    table.controls.clear();
    for (QWidget* control : all(root))
        if (!table.controls.contains(id(control)))
            table.controls.insert(id(control), control);
    return table.controls.value(controlId);
}

std::vector<QWidget*> KorControls::all(const QWidget* root) {
    std::vector<QWidget*> controls;
    walk(root, [&](QWidget* widget) {
        if (id(widget) != 0)
            controls.push_back(widget);
    });
    return controls;
}

void KorControls::setChecked(QAbstractButton* button, bool checked) {
    const bool exclusive = button->autoExclusive();
    button->setAutoExclusive(false);
    button->setChecked(checked);
    button->setAutoExclusive(exclusive);
}

void KorControls::commitEdits(QWidget* root) {
    for (KorMFCGridCtrl* grid : root->findChildren<KorMFCGridCtrl*>())
        grid->commitEdit();
    for (KorLineEdit* edit : root->findChildren<KorLineEdit*>())
        edit->commit();
}
