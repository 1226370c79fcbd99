#pragma once

#include "picture/Primitive.h"

#include <QPixmap>
#include <QWidget>

#include <memory>
#include <optional>

class QTimer;

/// Shows a drawing: as a whole, or as near as the user wants it. The wheel and pinching zoom about the
/// pointer, dragging moves, + and - zoom, the arrow keys move, 0 shows all of it and 1 the size on the sheet.
/// What is marked is painted above a picture of the drawing that is kept, so that marks cost no new drawing.
class PreviewView : public QWidget {
    Q_OBJECT

public:
    /// Places of primitives in the order of `Drawing::all`, ascending.
    using Places = std::vector<std::size_t>;

    explicit PreviewView(QWidget* parent = nullptr);

    /// Shows the drawing, nothing for null; the same place at the same size, unless all of it was shown.
    void show(std::shared_ptr<const Drawing> drawing);
    const Drawing* drawing() const { return m_drawing.get(); }
    /// Shows another drawing in the left part of the view, which is this share of its width, and a line
    /// between that can be dragged; no other one for null. The text stands there where it is blank.
    void compareWith(std::shared_ptr<const Drawing> other, double share, const QString& emptyText = {});
    /// What stands in the place of a drawing.
    void setEmptyText(const QString& text);

    void mark(Places places);
    const Places& marked() const { return m_marked; }

    void fit();
    void actualSize();
    /// Zooms about the middle.
    void zoomBy(double factor);
    /// Brings this part of the sheet up as large as the view has room for; all of it for an empty box.
    void zoomTo(const Box2& box);
    /// Whether all of the drawing is shown, whatever its size.
    bool isFitted() const { return m_follows && m_wanted.isEmpty(); }
    /// Pixels in a millimetre.
    double scale() const { return m_scale; }

    /// The primitive that a pointer there means; none farther away than a few pixels.
    std::optional<std::size_t> placeAt(const QPointF& position) const;
    QPointF toView(Vec2 point) const;

Q_SIGNALS:
    /// The pointer rests on another primitive, or on none.
    void pointedAt(std::optional<std::size_t> place);
    /// Once it is sure that no second click follows: what comes of one may move the drawing under the
    /// pointer.
    void clicked(std::size_t place, const QPoint& globalPosition);
    /// What the first of the two clicks hit.
    void doubleClicked(std::size_t place);
    void menuWanted(std::optional<std::size_t> place, const QPoint& globalPosition);
    /// The zoom is another one.
    void zoomed();
    /// The line between two drawings is dragged to this share of the width.
    void divided(double share);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    Vec2 toSheet(const QPointF& position) const;
    void zoomAbout(const QPointF& position, double factor);
    void move(const QPointF& by);
    void place(Vec2 centre, double scale);
    void showWanted();
    void pointAt(std::optional<std::size_t> place);
    bool isOnDivider(const QPointF& position) const;
    std::optional<std::size_t> placeForKeys() const;
    void forgetPictures();
    bool isCurrent(const QPixmap& picture) const;
    QPixmap painted(const std::vector<const Primitive*>& primitives) const;
    void paintMarks(QPainter& painter) const;
    void paintOther(QPainter& painter);
    void paintText(QPainter& painter, const QRectF& area, const QString& text) const;
    void setUpPainter(QPainter& painter) const;
    std::vector<const Primitive*> primitivesOf(const Places& places) const;

    std::shared_ptr<const Drawing> m_drawing;
    std::vector<const Primitive*> m_all; // of the drawing
    Places m_starts;                     // in that, of the second view and those behind it, and of the sheet
    std::shared_ptr<const Drawing> m_other; // in the left part
    std::vector<const Primitive*> m_allOther;
    double m_share = 0; // of the width, that shows the other one
    QString m_emptyText;
    QString m_otherEmptyText;
    Places m_marked;
    std::optional<std::size_t> m_pointed;

    Vec2 m_centre;         // of the sheet in the middle of the view
    double m_scale = 1.0;  // pixels in a millimetre
    bool m_follows = true; // the size of the view, until the user zooms or moves
    Box2 m_wanted;         // what is shown then; empty: all of the drawing
    QPixmap m_picture;     // of the drawing as it is placed; null: to be painted
    QPixmap m_otherPicture;
    QTimer* m_single;                     // until a click is known to be no first half of a double one
    std::optional<std::size_t> m_clicked; // what that click hit
    QPoint m_clickedAt;
    QPointF m_pressed; // where a drag began, or the pointer was last while it lasts
    bool m_isDragging = false;
    bool m_isDividing = false;
};
