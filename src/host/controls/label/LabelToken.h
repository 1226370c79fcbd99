#pragma once

#include "controls/label/LabelDesignerTexts.h"

#include <QObject>
#include <QTextObjectInterface>

/// Draws a variable inside of the text: its caption in a small rounded box, in the variable's own font, size
/// and colour. A name that has no caption is drawn with a dashed frame, as it is.
class LabelToken : public QObject, public QTextObjectInterface {
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)

public:
    using QObject::QObject;

    void setTexts(const LabelDesignerTexts& texts) { m_texts = texts; }

    QSizeF intrinsicSize(QTextDocument* document, int position, const QTextFormat& format) override;
    void drawObject(QPainter* painter, const QRectF& rect, QTextDocument* document, int position,
                    const QTextFormat& format) override;

private:
    LabelDesignerTexts m_texts;
};
