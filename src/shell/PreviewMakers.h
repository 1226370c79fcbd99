#pragma once

#include "session/KorDSMPreview.h"
#include "shell/PreviewPane.h"

class DrawingOutput;
class Navigation;

/// What made a line of the preview: a click lists it, nearest first, and the menu says why the line looks as
/// it does; each leads to the field that made it so.
class PreviewMakers : public QObject {
    Q_OBJECT

public:
    /// Follows the pointer in the pane. All must outlive the object. `output` is in the menu, too; of what is
    /// stored, shown where `isBefore` says so, nothing is known.
    PreviewMakers(KorDSMPreview& preview, PreviewPane& pane, Navigation& navigation,
                  const DrawingOutput& output, std::function<bool()> isBefore);

private:
    struct Cells {
        RowRef row;
        std::vector<int> columns;
    };
    void onPointedAt(std::optional<std::size_t> place);
    void listMakers(std::size_t place);
    void listReasons(std::size_t place);
    void goTo(std::vector<Cells> nearestFirst);
    void showMenu(std::optional<std::size_t> place, const QPoint& position);

    KorDSMPreview& m_preview;
    PreviewPane& m_pane;
    Navigation& m_navigation;
    const DrawingOutput& m_output;
    std::function<bool()> m_isBefore;
    std::vector<Cells> m_listed; // what the rows of the list lead to
};
