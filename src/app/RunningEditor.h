#pragma once

#include <QObject>
#include <QString>

#include <deque>
#include <filesystem>
#include <functional>

class QWidget;

/// What a start of the program wants of a window that is open already.
struct OpenRequest {
    QString file;       ///< a style database to show beside the others, absolute; empty: none
    QString style;      ///< name of the detail style to go to; empty: none
    QString source;     ///< where the style is, as the command line names it
    QString activation; ///< with which the desktop lets the window come to the front
};

/// The editor of a data folder, open or just starting. Other starts of the program with the same folder find
/// it by a socket in a folder of the user's own, and leave to it what they were to show.
class RunningEditor : public QObject {
public:
    enum class eAnswer { kTaken, kNobody, kNone };
    /// Hands the request to the editor of the data folder. Returns whether it took that, there is nobody, or
    /// it gave no answer, for which it is waited some seconds.
    static eAnswer handOver(const std::filesystem::path& dataFolder, const OpenRequest& request);

    /// Is told of a request. Returns whether it is done with that; otherwise the request is kept.
    using Receiver = std::function<bool(const OpenRequest&)>;

    /// Waits for requests as long as it lives, in the event loop. Where another editor does so for this data
    /// folder, or the socket cannot be made, none come.
    RunningEditor(const std::filesystem::path& dataFolder, Receiver receiver);
    ~RunningEditor() override;

    /// Whether other starts find it.
    bool isFound() const { return m_socket >= 0; }
    /// Who is told from now on, at first of the requests that were kept; before that there may be nobody.
    void setReceiver(Receiver receiver);
    /// Whether there are requests that nobody was done with.
    bool keepsRequests() const { return !m_kept.empty(); }
    /// Brings a window to the front, as far as the desktop lets it.
    static void raise(QWidget& window, const OpenRequest& request);

private:
    void answer();
    void tell(const OpenRequest& request);

    std::string m_place;
    int m_socket = -1;
    Receiver m_receiver;
    std::deque<OpenRequest> m_kept;
};
