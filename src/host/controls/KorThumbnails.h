#pragma once

#include <QObject>
#include <QPixmap>

#include <compare>
#include <cstdint>
#include <vector>

/// Small pictures of what rows stand for. They are made while nothing else is to be done, and only those
/// that are wanted.
class KorThumbnails : public QObject {
    Q_OBJECT

public:
    /// What a picture shows: a record of some kind in one of several databases. Only the maker knows what
    /// the numbers mean.
    struct Subject {
        int database = -1; ///< below 0: nothing, so that there is no picture
        int index = 0;     ///< of the database among those of its sort
        int kind = 0;
        std::int32_t key = 0;

        explicit operator bool() const { return database >= 0; }
        auto operator<=>(const Subject&) const = default;
    };

    /// The one of the current session; null where nobody makes any.
    static KorThumbnails* current();
    static void setCurrent(KorThumbnails* thumbnails);

    /// Of each picture, in logical pixels.
    static constexpr QSize kSize{84, 56};

    /// Whether the user wants to see them.
    virtual bool areShown() const = 0;
    /// The picture as it was made last, for this many pixels in a logical one; a null one until it is made.
    virtual QPixmap picture(const Subject& subject, qreal ratio) = 0;
    /// From now on these are wanted by whoever shows them, in this order, and no others: none once it does
    /// not show any more.
    virtual void want(const QObject& who, std::vector<Subject> subjects, qreal ratio) = 0;
    /// What they show may have changed: those that did are made anew when they are wanted.
    virtual void lookAgain() = 0;

Q_SIGNALS:
    /// A picture is another one.
    void made();
    /// They are shown from now on, or no more.
    void switched();
};
