#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QStyleOptionComboBox>
#include <QTabBar>
#include <QToolButton>

/// The texts below `root` that are seen and have less room than they need, each with what shows it. What
/// wraps is cut where it has not enough lines; what names a record is as long as users like, and does not
/// count: of what combos show only what stands in brackets, as all texts of the language for this do.
inline QStringList cutTexts(const QWidget& root) {
    QStringList cut;
    const auto note = [&cut](const QWidget& widget, const QString& text, int needs, int has) {
        if (needs > has && !text.isEmpty())
            cut << QStringLiteral("%1 \"%2\" needs %3 and has %4")
                       .arg(QString::fromLatin1(widget.metaObject()->className()), text)
                       .arg(needs)
                       .arg(has);
    };
    const auto widthOf = [](const QWidget& widget, QString text) {
        return widget.fontMetrics().horizontalAdvance(text.remove(QRegularExpression("&(?=[^&])")));
    };
    for (const QWidget* widget : root.findChildren<QWidget*>()) {
        if (!widget->isVisible())
            continue;
        if (const auto* label = qobject_cast<const QLabel*>(widget)) {
            if (!label->pixmap(Qt::ReturnByValue).isNull())
                continue;
            if (label->wordWrap())
                note(*label, label->text(), label->heightForWidth(label->width()), label->height());
            else
                note(*label, label->text(), label->sizeHint().width(), label->width());
        } else if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
            const auto* tool = qobject_cast<const QToolButton*>(widget);
            if (!tool || (tool->toolButtonStyle() != Qt::ToolButtonIconOnly && tool->icon().isNull()))
                note(*button, button->text(), widthOf(*button, button->text()), button->width());
        } else if (const auto* combo = qobject_cast<const QComboBox*>(widget)) {
            QStyleOptionComboBox option;
            option.initFrom(combo);
            option.editable = combo->isEditable();
            const int room =
                combo->style()
                    ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, combo)
                    .width();
            const int picture =
                combo->itemIcon(combo->currentIndex()).isNull() ? 0 : combo->iconSize().width() + 4;
            if (combo->currentText().startsWith(u'[')) // as all texts are; names are not
                note(*combo, combo->currentText(), widthOf(*combo, combo->currentText()) + picture, room);
        } else if (const auto* box = qobject_cast<const QGroupBox*>(widget)) {
            note(*box, box->title(), widthOf(*box, box->title()), box->width());
        } else if (const auto* bar = qobject_cast<const QTabBar*>(widget)) {
            for (int i = 0; i < bar->count(); ++i)
                note(*bar, bar->tabText(i), widthOf(*bar, bar->tabText(i)), bar->tabRect(i).width());
        } else if (const auto* head = qobject_cast<const QHeaderView*>(widget)) {
            for (int i = 0; head->orientation() == Qt::Horizontal && head->model() && i < head->count(); ++i)
                if (const QString title = head->model()->headerData(i, Qt::Horizontal).toString();
                    !head->isSectionHidden(i))
                    note(*head, title, widthOf(*head, title), head->sectionSize(i));
        }
    }
    return cut;
}
