#pragma once

#include "base/KorString.h"
#include "shell/PreviewView.h"

class KorButtonGroup;
class KorComboBox;
class QAction;
class QLabel;
class QSlider;
class QListWidget;

/// What stands beside the pages: a picture of a sample part with what can be done to look at it, what the
/// picture is and is not, and a list of what made a line of it. It decides nothing.
class PreviewPane : public QWidget {
    Q_OBJECT

public:
    /// The buttons, by their numbers.
    enum eTool : int { kFit = 2091, kActualSize, kZoomIn, kZoomOut, kBefore, kPlace, kOutput = 2099 };

    explicit PreviewPane(QWidget* parent = nullptr);

    PreviewView& view() const { return *m_view; }

    /// The sample parts that can be chosen, by the names of their files and as users read them.
    void setParts(const std::vector<std::pair<std::string, KorString>>& parts);
    bool hasParts() const;
    void setPart(const std::string& name);
    /// What is drawn, and on whose behalf.
    void setHead(const QString& text);
    /// What the picture is not, which stands out where it is a trial, and one sentence for each thing that it
    /// does not show.
    void setFoot(const QString& schematic, const QStringList& notes, bool isTrial);
    /// Why nothing is marked, or what became different; nothing for an empty text, which leaves its room free
    /// so that the picture does not jump. With a text for a link, that stands behind it.
    void setNote(const QString& text, const QString& link = {});
    /// Whether the picture can be compared with the one of what is stored, and the share of it that shows
    /// that.
    void setComparison(bool isPossible, double share);
    void setPlaceText(const QString& text);
    /// What the drawing can be put out by: the first one by a button, and all in its menu.
    void setOutput(const QList<QAction*>& actions);

    /// Brings up a list, of which one row may stand out; the rows can be chosen.
    void showList(const QString& caption, const QStringList& rows, int marked = -1);
    void hideList();
    bool hasList() const;

Q_SIGNALS:
    void partChosen(const QString& name);
    void toolPressed(int tool);
    void linkFollowed();
    /// This share of the picture is to show what is stored.
    void compared(double share);
    /// A row of the list was chosen.
    void rowChosen(int row);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

private:
    QWidget* makeTools();
    QWidget* makeHead();
    QWidget* makeList();
    void keepRoom();

    KorComboBox* m_parts;
    KorButtonGroup* m_tools;
    QLabel* m_head;
    QSlider* m_slider;
    PreviewView* m_view;
    QLabel* m_note;
    QWidget* m_listBox;
    QLabel* m_listCaption;
    QListWidget* m_list;
    QLabel* m_foot;
    QLabel* m_notes;
};
