#pragma once

#include "session/KorDSMPreview.h"
#include "shell/DrawingOutput.h"
#include "shell/PreviewCommands.h"
#include "shell/PreviewMakers.h"
#include "shell/PreviewPane.h"
#include "shell/PreviewPlace.h"

#include <QTimer>

class KorButtonGroup;
class KorVerticalSplitter;
class Navigation;
class TreeSelection;

/// The preview beside the pages: it follows what is selected, changed, typed and focused. While it is hidden
/// nothing is drawn.
class StylePreview : public QObject {
    Q_OBJECT

public:
    /// Puts a pane into the splitter, behind what it has, and a button into `strip`. All must outlive the
    /// object; `window` is asked for its screen.
    StylePreview(QWidget& window, KorVerticalSplitter& splitter, KorButtonGroup& strip,
                 TreeSelection& selection, Navigation& navigation);

    bool isShown() const { return m_place.isShown(); }
    void setShown(bool shown);
    /// How much wider a window is to open, that was never opened before.
    int wantedWidth() const { return m_place.wantedWidth(); }

    /// Something may be different from what is drawn: it is looked at as soon as nothing is busy.
    void follow();
    /// Something is being typed, or was: it is drawn after a pause.
    void followTyping();

    /// Connects the pages, which are made after the preview.
    void connectPages();

    PreviewPane& pane() const { return *m_pane; }
    KorDSMPreview& preview() { return m_preview; }
    /// How often something was drawn since the window was opened.
    int drawings() const { return m_drawings; }

private:
    void makeCommands();
    void onTool(int tool);
    void onPartChosen(const std::string& name);

    void update();
    void showDrawing();
    QString whyBlank(bool stored, const Drawing* drawn) const;
    QString differencesTo(const Drawing* stored) const;
    void showRecord();
    void showEffects();
    void showHead();
    void showFoot();
    void followFocus(const QWidget* focus);
    void markField();
    void explainNothing();
    void offerPart();
    void lookAhead();

    void compare(double share);
    void showCompared();
    bool isBefore() const { return m_share >= 1; }

    QWidget& m_window;
    KorButtonGroup& m_strip;
    TreeSelection& m_selection;
    KorDSMPreview m_preview;
    PreviewPane* m_pane;
    QTimer* m_ahead; // of the pane
    PreviewPlace m_place;
    PreviewCommands m_commands;
    DrawingOutput m_output;
    PreviewMakers m_makers;
    QTimer m_typing;
    QTimer m_offering;
    bool m_isDue = false;
    double m_share = 0; // of the picture, that shows what is stored
    bool m_isDivided = false;
    std::shared_ptr<const Drawing> m_stored; // while that is compared; null: to be drawn
    QString m_differences;                   // to that
    int m_drawings = 0;
    RowRef m_shownRow;
    std::optional<FieldPlace> m_field; // that has the focus, or had it before the pane got it
    std::string m_offered;             // the part that the link leads to
};
