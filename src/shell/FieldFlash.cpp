#include "shell/FieldFlash.h"

#include "controls/KorStyle.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QPainter>
#include <QPointer>
#include <QTimer>
#include <QWidget>

namespace {

constexpr int kDuration = 1600; // milliseconds
constexpr const char* kName = "fieldFlash";
constexpr int kAround = 4;
constexpr double kLine = 2.5;

// The field, or the cell of it that is current.
QRect placeOf(const QWidget& field) {
    const auto* view = qobject_cast<const QAbstractItemView*>(&field);
    const QRect cell =
        view && view->currentIndex().isValid() ? view->visualRect(view->currentIndex()) : QRect();
    return cell.isValid() ? QRect(view->viewport()->mapTo(view, cell.topLeft()), cell.size()) : field.rect();
}

// Lies over the field and takes nothing from it.
class Frame : public QWidget {
public:
    explicit Frame(QWidget& field) : QWidget(field.window()), m_field(field) {
        setObjectName(QString::fromLatin1(kName));
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::NoFocus);
        field.installEventFilter(this);
        connect(&field, &QObject::destroyed, this, &QObject::deleteLater);
        QTimer::singleShot(kDuration, this, &QObject::deleteLater);
        place();
        // A page that was just brought up is laid out a moment later.
        QTimer::singleShot(0, &field, [frame = QPointer<Frame>(this)] {
            if (frame)
                frame->place();
        });
        show();
        raise();
    }

    void place() {
        const QRect around = placeOf(m_field);
        const QRect there(m_field.mapTo(window(), around.topLeft()), around.size());
        setGeometry(there.adjusted(-kAround, -kAround, kAround, kAround));
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
        painter.setPen(QPen(KorStyle::focusColor(palette()), kLine));
        painter.drawRoundedRect(QRectF(rect()).adjusted(kLine / 2, kLine / 2, -kLine / 2, -kLine / 2), 3, 3);
    }

private:
    QWidget& m_field;
};

} // namespace

void FieldFlash::show(QWidget& field) {
    for (QWidget* before : field.window()->findChildren<QWidget*>(QString::fromLatin1(kName))) {
        before->hide();
        before->deleteLater();
    }
    new Frame(field);
}
