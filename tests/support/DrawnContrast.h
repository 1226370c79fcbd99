#pragma once

#include "support/Accessibility.h"

#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QStyleOptionGroupBox>
#include <QTabBar>

#include <functional>
#include <map>

/// What stands out of its ground in a picture of a window, as it is drawn.
class DrawnContrast {
public:
    static constexpr double kText = 4.5; ///< what is read
    static constexpr double kShape = 3;  ///< icons, marks, highlights

    explicit DrawnContrast(QWidget& window)
        : m_window(window), m_picture(window.grab().toImage().convertToFormat(QImage::Format_RGB32)) {}

    /// Expects that texts, icons, marks and highlights of the window stand out enough. Returns how many.
    int expectSeen() {
        for (QWidget* widget : m_window.findChildren<QWidget*>())
            if (widget->isVisible() && widget->window() == &m_window)
                look(*widget);
        return m_seen;
    }

private:
    // The commonest colour of an area of a widget, as far as it is in sight.
    QRgb groundOf(const QRect& area) const {
        std::map<QRgb, int> counts;
        for (int y = area.top(); y <= area.bottom(); ++y)
            for (int x = area.left(); x <= area.right(); ++x)
                ++counts[m_picture.pixel(x, y)];
        return std::ranges::max_element(counts, {}, &std::pair<const QRgb, int>::second)->first;
    }
    QRect inPicture(const QWidget& widget, const QRect& area) const {
        const QRect seen = widget.visibleRegion().boundingRect().intersected(area);
        return QRect(widget.mapTo(&m_window, seen.topLeft()), seen.size()).intersected(m_picture.rect());
    }
    void expectIn(const QWidget& widget, const QRect& area, double least, const QString& what) {
        const QRect place = inPicture(widget, area);
        // What is disabled is exempt from the guidelines; its colours are judged by the palette.
        if (!widget.isEnabled() || place.width() < 6 || place.height() < 6 || what.trimmed().isEmpty())
            return;
        ++m_seen;
        const QColor ground(groundOf(place));
        double best = 1;
        for (int y = place.top(); y <= place.bottom() && best < least; ++y)
            for (int x = place.left(); x <= place.right() && best < least; ++x)
                best = std::max(best, wcagContrast(QColor(m_picture.pixel(x, y)), ground));
        EXPECT_GE(best, least) << what.toStdString() << " of " << widget.metaObject()->className() << ' '
                               << widget.property("controlId").toInt();
    }
    void look(QWidget& widget) {
        if (const auto* label = qobject_cast<QLabel*>(&widget))
            expectIn(widget, label->rect(), label->pixmap().isNull() ? kText : kShape,
                     label->pixmap().isNull() ? label->text() : QStringLiteral("picture"));
        else if (const auto* tabs = qobject_cast<QTabBar*>(&widget))
            for (int i = 0; i < tabs->count(); ++i)
                expectIn(widget, tabs->tabRect(i).adjusted(4, 4, -4, -4), kText, tabs->tabText(i));
        else if (const auto* button = qobject_cast<QAbstractButton*>(&widget))
            lookAt(*button);
        else if (const auto* edit = qobject_cast<QLineEdit*>(&widget))
            expectIn(widget, edit->rect().adjusted(4, 4, -4, -4), kText, edit->text());
        else if (const auto* combo = qobject_cast<QComboBox*>(&widget))
            expectIn(widget, combo->rect().adjusted(4, 4, -24, -4), kText,
                     combo->isEditable() ? QString() : combo->currentText());
        else if (const auto* box = qobject_cast<QGroupBox*>(&widget))
            expectIn(widget, QRect(0, 0, box->width(), box->fontMetrics().height()), kText, box->title());
        else if (auto* view = qobject_cast<QAbstractItemView*>(&widget);
                 view && view->model() && !qobject_cast<QHeaderView*>(view))
            lookAt(*view);
    }
    void lookAt(const QAbstractButton& button) {
        QStyleOptionButton option;
        option.initFrom(&button);
        option.text = button.text();
        const bool isRadio = button.inherits("QRadioButton");
        const auto part = [&](QStyle::SubElement radio, QStyle::SubElement box) {
            return button.style()->subElementRect(isRadio ? radio : box, &option, &button);
        };
        if (isRadio || button.inherits("QCheckBox")) {
            expectIn(button, part(QStyle::SE_RadioButtonContents, QStyle::SE_CheckBoxContents), kText,
                     button.text());
            expectIn(
                button,
                part(QStyle::SE_RadioButtonIndicator, QStyle::SE_CheckBoxIndicator).adjusted(-2, -2, 2, 2),
                kShape, QStringLiteral("mark"));
            return;
        }
        if (const QVariant opacity = button.property("opacity"); opacity.isValid() && opacity.toReal() < 1)
            return; // it comes up yet
        const bool hasText =
            !button.text().isEmpty() && button.property("toolButtonStyle").toInt() != Qt::ToolButtonIconOnly;
        if (hasText || (button.isEnabled() && !button.icon().isNull()))
            expectIn(button, button.rect().adjusted(4, 4, -4, -4), hasText ? kText : kShape,
                     hasText ? button.text() : "icon " + button.toolTip());
    }
    void lookAt(QAbstractItemView& view) {
        const QWidget& port = *view.viewport();
        const QRect seen = port.visibleRegion().boundingRect();
        for (int y = 2; y < port.height();) {
            const QModelIndex index = view.indexAt({port.width() / 2, y});
            const QRect row = view.visualRect(index);
            if (!index.isValid() || row.height() < 6)
                break;
            for (int column = 0; column < view.model()->columnCount(index.parent()); ++column)
                if (const QModelIndex cell = index.siblingAtColumn(column);
                    cell.flags() & Qt::ItemIsEnabled && seen.contains(view.visualRect(cell)))
                    expectIn(port, view.visualRect(cell), kText, cell.data().toString());
            y = row.bottom() + 2;
        }
        const QModelIndexList chosen = view.selectionModel()->selectedIndexes();
        if (chosen.isEmpty() || !view.hasFocus())
            return;
        const QRect row = inPicture(port, view.visualRect(chosen.first()));
        if (row.height() < 6)
            return;
        ++m_seen;
        double best = 1;
        const QColor base = view.palette().color(QPalette::Base);
        for (const int y : {row.top(), row.bottom()}) // the fill, or the frame around it
            for (int x = row.left(); x <= row.right(); ++x)
                best = std::max(best, wcagContrast(QColor(m_picture.pixel(x, y)), base));
        EXPECT_GE(best, kShape) << "highlight of " << view.metaObject()->className();
    }

    QWidget& m_window;
    QImage m_picture;
    int m_seen = 0;
};
