#include "controls/KorControls.h"

#include "controls/KorButtonGroup.h"
#include "controls/KorLineEdit.h"
#include "controls/KorMFCGridCtrl.h"
#include "controls/KorTemplates.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QComboBox>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
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

void KorControls::setEditable(QWidget* control, bool editable) {
    if (auto* strip = qobject_cast<KorButtonGroup*>(control)) {
        strip->enableWindow(editable);
    } else if (auto* field = qobject_cast<QLineEdit*>(control)) {
        field->setReadOnly(!editable);
        field->setEnabled(true);
    } else {
        control->setEnabled(editable);
    }
}

void KorControls::setChecked(QAbstractButton* button, bool checked) {
    QButtonGroup* group = button->group();
    const bool exclusive = group ? group->exclusive() : button->autoExclusive();
    const auto setExclusive = [&](bool on) {
        if (group)
            group->setExclusive(on);
        else
            button->setAutoExclusive(on);
    };
    setExclusive(false);
    button->setChecked(checked);
    setExclusive(exclusive);
}

// Screen readers take the name of a combo box from the label that lies in the same widget, and from no other.
void KorControls::setName(QWidget* control, const QString& name) {
    control->setAccessibleName(name);
    QWidget* parent = control->parentWidget();
    if (!parent || !qobject_cast<QComboBox*>(control))
        return;
    for (QLabel* label : parent->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly))
        if (label->buddy() == control)
            return label->isHidden() ? label->setText(name) : void();
    auto* label = new QLabel(name, parent);
    label->setBuddy(control);
    label->hide();
}

void KorControls::nameByLabels(QWidget* root) {
    for (const QLabel* label : root->findChildren<QLabel*>()) {
        if (label->isHidden())
            continue;
        QString name = label->accessibleName().isEmpty() ? label->text() : label->accessibleName();
        name.remove(QLatin1Char('&'));
        if (name.endsWith(QLatin1Char(':')))
            name.chop(1);
        if (label->buddy() && !name.isEmpty())
            setName(label->buddy(), name);
    }
}

void KorControls::group(QWidget* root, std::span<const int> radios) {
    auto* together = new QButtonGroup(root);
    for (const int radio : radios)
        if (auto* button = find<QAbstractButton>(root, radio))
            together->addButton(button);
}

void KorControls::commitEdits(QWidget* root) {
    for (KorMFCGridCtrl* grid : root->findChildren<KorMFCGridCtrl*>())
        grid->commitEdit();
    // What is stored can bring a page to make its controls anew.
    const auto found = root->findChildren<KorLineEdit*>();
    for (const QPointer<KorLineEdit>& edit : std::vector<QPointer<KorLineEdit>>(found.begin(), found.end()))
        if (edit)
            edit->commit();
}

void KorControls::dropEdits(QWidget* root) {
    for (KorMFCGridCtrl* grid : root->findChildren<KorMFCGridCtrl*>())
        grid->dropEdit();
    for (KorLineEdit* edit : root->findChildren<KorLineEdit*>())
        if (edit->isEdited())
            edit->restore();
}
