#pragma once

#include "app/RunningEditor.h"

#include <chrono>
#include <memory>

class DataFolder;
class QApplication;
class StartWindow;

/// The start of a program with a window: its application, made when it is first needed, and a small window
/// where a server makes the start wait, which says so and lets the user go on without it.
class WindowStart {
public:
    /// `argv` is the program's own.
    explicit WindowStart(char** argv);
    ~WindowStart();
    WindowStart(const WindowStart&) = delete;
    WindowStart& operator=(const WindowStart&) = delete;

    /// Opens the databases of the folder, and asks for the passwords that servers want.
    void open(DataFolder& folder);
    /// Other starts of the program find this one from now on: the window that it shows comes to the front,
    /// and what they were to show is kept for the editor. Returns false where they find another one.
    bool beFound(const DataFolder& folder);
    /// What finds this start, for the editor's window; null where nothing does, or it was taken.
    std::unique_ptr<RunningEditor> takeRunning() { return std::move(m_running); }
    /// Whether it was to be found already, and whether other starts left something to be shown.
    bool wasToBeFound() const { return m_running != nullptr; }
    bool keepsRequests() const { return m_running && m_running->keepsRequests(); }
    /// Makes the application, where there is none yet.
    void makeApplication();

private:
    bool show(std::chrono::milliseconds waited);

    int m_argc = 1; // Qt would take options such as --style for its own
    char** m_argv;
    std::unique_ptr<QApplication> m_application;
    std::unique_ptr<RunningEditor> m_running; // goes before the application does
    std::unique_ptr<StartWindow> m_window;
};
