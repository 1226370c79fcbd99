#include "shell/FieldFlash.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QPainter>
#include <QTimer>
#include <QWidget>

namespace {

constexpr int kDuration = 1600; // milliseconds
constexpr int kAround = 4;
constexpr double kLine = 2.5;

// Lies over the field and takes nothing from it.
class Frame : public QWidget {
public:
    Frame(QWidget& field, const QRect& around) : QWidget(field.window()) {
        setObjectName(QStringLiteral("fieldFlash"));
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::NoFocus);
        const QRect place(field.mapTo(window(), around.topLeft()), around.size());
        setGeometry(place.adjusted(-kAround, -kAround, kAround, kAround));
        field.installEventFilter(this);
        QTimer::singleShot(kDuration, this, &QObject::deleteLater);
        show();
        raise();
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::KeyPress || event->type() == QEvent::FocusOut)
            deleteLater();
        return false;
    }
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(palette().color(QPalette::Highlight), kLine));
        painter.drawRoundedRect(QRectF(rect()).adjusted(kLine / 2, kLine / 2, -kLine / 2, -kLine / 2), 3, 3);
    }
};

} // namespace

void FieldFlash::show(QWidget& field) {
    for (QObject* child : field.window()->children())
        if (child->objectName() == QLatin1String("fieldFlash"))
            child->deleteLater();
    const auto* view = qobject_cast<QAbstractItemView*>(&field);
    const QRect cell =
        view && view->currentIndex().isValid() ? view->visualRect(view->currentIndex()) : QRect();
    // A cell is a place of what scrolls, not of the frame around that.
    const QRect around =
        cell.isValid() ? QRect(view->viewport()->mapTo(view, cell.topLeft()), cell.size()) : field.rect();
    new Frame(field, around);
}
