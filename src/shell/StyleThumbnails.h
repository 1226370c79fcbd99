#pragma once

#include "controls/KorThumbnails.h"
#include "picture/PaperColor.h"
#include "session/KorDSMThumbnails.h"

#include <QTimer>

#include <map>
#include <unordered_map>

/// Makes the thumbnails of detail styles and views: one at a time, whenever the event loop has nothing else
/// to do and nothing is busy.
class StyleThumbnails : public KorThumbnails {
    Q_OBJECT

public:
    StyleThumbnails();

    /// Those of the current session, which controls find from now on.
    static StyleThumbnails& ofSession();

    /// What a picture of the item would show.
    static Subject subjectOf(const KorDSMDatabaseItem* item);

    bool areShown() const override { return m_areShown; }
    /// Whether they are shown is remembered.
    void setShown(bool shown);
    QPixmap picture(const Subject& subject, qreal ratio) override;
    void want(const QObject& who, std::vector<Subject> subjects, qreal ratio) override;
    void lookAgain() override;

    /// Whether some that are wanted are still to be made.
    bool isWorking() const { return m_timer.isActive(); }
    /// How many were drawn since the session began.
    int drawings() const { return m_drawings; }

private:
    struct Made {
        QPixmap picture;
        PaperColor::eGround ground = {};
        unsigned state = 0; ///< the one of `m_state` at which it was right
        unsigned used = 0;
    };
    struct Wish {
        std::vector<Subject> subjects;
        qreal ratio = 1;
    };

    Made* find(const Subject& subject, qreal ratio);
    bool isRight(const Subject& subject, qreal ratio);
    void makeOne();
    void make(const Subject& subject, qreal ratio);
    void makeRoom();

    KorDSMThumbnails m_drawn;
    std::map<Subject, Made> m_made;
    std::unordered_map<const QObject*, Wish> m_wishes;
    QTimer m_timer;
    unsigned m_state = 1; // another one whenever something may have changed
    unsigned m_uses = 0;
    bool m_areShown;
    int m_drawings = 0;
};
