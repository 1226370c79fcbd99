#pragma once

#include "session/KorDSMLockWait.h"

#include <memory>

class DataFolder;
class QApplication;
class QWidget;

/// The start of a program with a window: its application, made when it is first needed, and a small window
/// where a server makes the start wait, which says so and lets the user go on without it.
class WindowStart {
public:
    /// `argv` is the program's own.
    explicit WindowStart(char** argv);
    ~WindowStart();
    WindowStart(const WindowStart&) = delete;
    WindowStart& operator=(const WindowStart&) = delete;

    /// Opens the databases of the folder.
    void open(DataFolder& folder);
    /// Makes the application, where there is none yet.
    void makeApplication();

private:
    bool show(std::chrono::milliseconds waited);

    int m_argc = 1; // Qt would take options such as --style for its own
    char** m_argv;
    std::unique_ptr<QApplication> m_application;
    std::unique_ptr<QWidget> m_window;
    bool m_wasShown = false;
};
