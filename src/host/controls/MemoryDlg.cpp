#include "controls/MemoryDlg.h"

#include "controls/KorControls.h"
#include "controls/KorLayoutStore.h"
#include "controls/KorQt.h"
#include "controls/KorVerticalSplitter.h"

#include <QScreen>

namespace {

// The setting reads "<window>;<control id>=<splitter>;…", the states in base 64.
constexpr QChar kSeparator = u';';

// What a window manager adds around a window. It says so only when the window is open already.
constexpr QSize kFrame(16, 40);

QString encoded(const QByteArray& state) {
    return QString::fromLatin1(state.toBase64());
}

QByteArray decoded(QStringView text) {
    return QByteArray::fromBase64(text.toLatin1());
}

// As the user left it, wherever a pane gives way just now.
QByteArray stateOf(QSplitter& splitter) {
    auto* yielding = qobject_cast<KorVerticalSplitter*>(&splitter);
    return yielding ? yielding->saveWanted() : splitter.saveState();
}

void bringBack(QSplitter& splitter, const QByteArray& state) {
    if (auto* yielding = qobject_cast<KorVerticalSplitter*>(&splitter))
        yielding->restoreWanted(state);
    else
        splitter.restoreState(state);
}

} // namespace

void MemoryDlg::setWindow(QWidget* window) {
    m_window = window;
    for (const Control& control : m_controls)
        apply(control);
}

void MemoryDlg::registerControl(int controlId, int flags) {
    m_controls.push_back({controlId, flags});
    apply(m_controls.back());
}

void MemoryDlg::apply(const Control& control) const {
    QWidget* widget = m_window ? KorControls::find(m_window, control.id) : nullptr;
    if (!widget)
        return;
    QSizePolicy policy = widget->sizePolicy();
    if (control.flags & eStretchX)
        policy.setHorizontalPolicy(QSizePolicy::Expanding);
    if (control.flags & eStretchY)
        policy.setVerticalPolicy(QSizePolicy::Expanding);
    widget->setSizePolicy(policy);
}

bool MemoryDlg::restore() {
    const QStringList parts = toQt(KorLayoutStore::read(m_name)).split(kSeparator);
    if (!m_window || !m_window->restoreGeometry(decoded(parts.first()))) {
        fitToScreen();
        return false;
    }
    for (const QString& part : parts.mid(1)) {
        const qsizetype equals = part.indexOf(u'=');
        auto* splitter = KorControls::find<QSplitter>(m_window, part.left(equals).toInt());
        if (splitter)
            bringBack(*splitter, decoded(QStringView(part).mid(equals + 1)));
    }
    return true;
}

void MemoryDlg::fitToScreen() const {
    if (!m_window)
        return;
    const QSize room = m_window->screen()->availableGeometry().size() - kFrame;
    m_window->setMinimumSize(m_window->minimumSize().boundedTo(room));
    m_window->resize(m_window->size().boundedTo(room));
}

void MemoryDlg::writeSetting() const {
    if (!m_window)
        return;
    QStringList parts{encoded(m_window->saveGeometry())};
    for (const Control& control : m_controls)
        if (auto* splitter = KorControls::find<QSplitter>(m_window, control.id))
            parts.append(QString::number(control.id) + u'=' + encoded(stateOf(*splitter)));
    KorLayoutStore::write(m_name, fromQt(parts.join(kSeparator)));
}
