#pragma once

#include <QLabel>

/// A plain text in one line that is shortened where there is no room for it. The tooltip, and what screen
/// readers hear, have all of it.
class KorElidedLabel : public QLabel {
public:
    /// `mode` says where letters are left out. The parent owns it.
    explicit KorElidedLabel(Qt::TextElideMode mode, QWidget* parent = nullptr);

    /// Shows the first line of the text. `more` stands below it in the tooltip; empty for nothing.
    void setWhole(const QString& text, const QString& more = {});
    const QString& whole() const { return m_whole; }

    /// Room for all of the line.
    QSize sizeHint() const override;
    /// Room for a few letters of it, so that it can be seen that there is something.
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void takeRoom();
    void fit();
    QSize sizeFor(int textWidth) const;

    Qt::TextElideMode m_mode;
    QString m_whole;
};
