#pragma once

#include "picture/PicturePage.h"

#include <QObject>

#include <functional>
#include <optional>

class QAction;
class QWidget;

/// The ways out of the window for a drawing: files, the clipboard and paper, for it alone or with all that
/// its style says in words.
class DrawingOutput : public QObject {
    Q_OBJECT

public:
    /// What is put out: the drawing, or the style sheet with it; nothing where nothing is drawn.
    using Page = std::function<std::optional<PicturePage>(bool isSheet)>;

    /// The commands belong to `window`, which is asked for files and printers; the key of copying holds in
    /// `view`. Both must outlive the object.
    DrawingOutput(QWidget& window, QWidget& view, Page page);

    /// The commands, which belong to the object.
    const QList<QAction*>& actions() const { return m_actions; }
    void setEnabled(bool isEnabled);

Q_SIGNALS:
    /// What came of a command, in one sentence.
    void told(const QString& sentence);

private:
    void save(bool isSheet);
    void copy(bool isSheet);
    void print(bool isSheet);

    QWidget& m_window;
    Page m_page;
    QList<QAction*> m_actions;
};
