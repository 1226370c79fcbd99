#pragma once

#include "app/Commands.h"

#include <functional>

class QWidget;

/// A picture of a window that opens without a user: painted into a file, then closed.
class WindowPicture {
public:
    /// Whether there is a display to open a window on, and the picture that is wanted may be written;
    /// complains otherwise. A picture needs no display. Called before there is a QApplication. The window of
    /// a picture is not the user's own, so nothing about it is remembered.
    static bool prepareDisplay(const PictureOptions& options);

    /// `options` must outlive the object.
    explicit WindowPicture(const PictureOptions& options) : m_options(options) {}

    /// Paints the window once it has settled, then closes it; `window` gives null while it is not there yet.
    void paintWhenOpen(const std::function<QWidget*()>& window);
    /// What became of the picture, as an exit code; complains where it is missing or shows only what could be
    /// read.
    int finish(const DataFolder& folder) const;

private:
    void paint(QWidget& window);

    const PictureOptions& m_options;
    bool m_isPainted = false;
};
