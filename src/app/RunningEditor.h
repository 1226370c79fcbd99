#pragma once

#include <QObject>
#include <QString>

#include <filesystem>
#include <functional>

/// What a start of the program wants of a window that is open already.
struct OpenRequest {
    QString file;       ///< a style database to show beside the others, absolute; empty: none
    QString style;      ///< name of the detail style to go to; empty: none
    QString source;     ///< where the style is, as the command line names it
    QString activation; ///< with which the desktop lets the window come to the front
};

/// The window on a data folder. Other starts of the program with the same folder find it by a socket in the
/// user's runtime folder, and leave to it what they were to show.
class RunningEditor : public QObject {
public:
    /// Hands the request to the window that is open on the data folder. Returns whether there is one, and it
    /// took the request.
    static bool handOver(const std::filesystem::path& dataFolder, const OpenRequest& request);

    /// Waits for requests as long as it lives, in the event loop. Where the socket cannot be made none come.
    RunningEditor(const std::filesystem::path& dataFolder, std::function<void(const OpenRequest&)> onRequest);
    ~RunningEditor() override;

private:
    void answer();

    std::string m_place;
    int m_socket = -1;
    std::function<void(const OpenRequest&)> m_onRequest;
};
