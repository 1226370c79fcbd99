#pragma once

#include "base/KorString.h"

#include <QFrame>
#include <QIcon>

/// An information panel: a picture alone, or a picture with a text beside it. Pictures are the program's
/// bitmaps (see KorPictures); one that is larger than the panel is made smaller, never larger. Its name for
/// those who do not see it is the text, or what a picture alone shows.
class KorInfoCtrl : public QFrame {
    Q_OBJECT

public:
    explicit KorInfoCtrl(QWidget* parent = nullptr);

    /// Shows a text and the bitmap of that number; an empty text and number 0 stand for none.
    void setInfo(const KorString& text, int pictureId);
    const KorString& text() const { return m_text; }
    int pictureId() const { return m_pictureId; }

    /// Whether a frame is drawn. Off at first.
    void setFrame(bool on);
    /// Whether the panel is as large as its content; else (at first) it takes the room that there is.
    void setFitToContent(bool on);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QRect textRect(int width) const;

    KorString m_text;
    QIcon m_picture;
    QSize m_pictureSize;
    int m_pictureId = 0;
};
