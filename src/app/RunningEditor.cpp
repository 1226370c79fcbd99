#include "app/RunningEditor.h"

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QSysInfo>
#include <QWidget>

#include <cerrno>
#include <cstring>
#include <memory>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr char kTaken = '+';
constexpr qsizetype kLongest = 64 * 1024; // of a request

/// A socket that is closed with it.
class Socket {
public:
    explicit Socket(int handle = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) : m_handle(handle) {
        const timeval patience{10, 0}; // the other one may be reading its databases
        ::setsockopt(m_handle, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        ::setsockopt(m_handle, SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
    }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    ~Socket() {
        if (m_handle >= 0)
            ::close(m_handle);
    }
    int handle() const { return m_handle; }
    int release() { return std::exchange(m_handle, -1); }

    bool send(const QByteArray& bytes) const {
        return ::send(m_handle, bytes.data(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL) ==
               bytes.size();
    }
    /// All up to the end that the other side makes.
    QByteArray receive() const {
        QByteArray bytes;
        char part[4096];
        for (ssize_t read = 0;
             bytes.size() < kLongest && (read = ::recv(m_handle, part, sizeof part, 0)) > 0;)
            bytes.append(part, read);
        return bytes;
    }
    /// Takes what is there already. Returns false at the end, and where the other side broke off.
    bool isMoreToCome(QByteArray& bytes) const {
        char part[4096];
        ssize_t read = 0;
        while (bytes.size() < kLongest && (read = ::recv(m_handle, part, sizeof part, 0)) > 0)
            bytes.append(part, read);
        return read < 0 && (errno == EAGAIN || errno == EINTR);
    }

private:
    int m_handle;
};

// The user's own folder of the session; where there is none, as after a change of the user, that of caches,
// which several machines may share.
fs::path meetingFolder() {
    const QByteArray session = qgetenv("XDG_RUNTIME_DIR");
    struct stat state {};
    const bool isOwn = session.startsWith('/') && ::stat(session.constData(), &state) == 0 &&
                       S_ISDIR(state.st_mode) && state.st_uid == ::geteuid();
    const QString caches = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    return fs::path(isOwn ? session.toStdString() : caches.toStdString()) / "detailstyles";
}

std::string placeOf(const fs::path& dataFolder) {
    std::error_code error;
    const fs::path folder = meetingFolder();
    const std::string subject =
        fs::weakly_canonical(dataFolder, error).string() + '\n' + QSysInfo::machineHostName().toStdString();
    const QByteArray name =
        QCryptographicHash::hash(QByteArray::fromStdString(subject), QCryptographicHash::Sha256);
    if (fs::create_directories(folder, error))
        fs::permissions(folder, fs::perms::owner_all, error);
    return (folder / name.toHex().left(16).toStdString()).string();
}

/// Of several starts at the same time the one that holds it looks whether the place is taken, and takes it.
class PlaceLock {
public:
    explicit PlaceLock(const std::string& place)
        : m_folder(::open(fs::path(place).parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        ::flock(m_folder, LOCK_EX);
    }
    PlaceLock(const PlaceLock&) = delete;
    PlaceLock& operator=(const PlaceLock&) = delete;
    ~PlaceLock() { ::close(m_folder); }

private:
    int m_folder;
};

/// Does something with the address of a place; false where the name is too long for one, or empty.
template <typename Call>
bool at(const std::string& place, Call call) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (place.empty() || place.size() >= sizeof address.sun_path)
        return false;
    std::memcpy(address.sun_path, place.data(), place.size());
    return call(reinterpret_cast<const sockaddr*>(&address), socklen_t{sizeof address}) == 0;
}

bool connects(const Socket& socket, const std::string& place) {
    return at(place, [&socket](const sockaddr* address, socklen_t size) {
        return ::connect(socket.handle(), address, size);
    });
}

} // namespace

RunningEditor::eAnswer RunningEditor::handOver(const fs::path& dataFolder, const OpenRequest& request) {
    const Socket socket;
    if (!connects(socket, placeOf(dataFolder)))
        return eAnswer::kNobody;
    const QJsonObject document{{"file", request.file},
                               {"style", request.style},
                               {"source", request.source},
                               {"activation", request.activation}};
    const bool isTaken = socket.send(QJsonDocument(document).toJson(QJsonDocument::Compact)) &&
                         ::shutdown(socket.handle(), SHUT_WR) == 0 && socket.receive().startsWith(kTaken);
    return isTaken ? eAnswer::kTaken : eAnswer::kNone;
}

RunningEditor::RunningEditor(const fs::path& dataFolder, Receiver receiver)
    : m_place(placeOf(dataFolder)), m_receiver(std::move(receiver)) {
    const PlaceLock lock(m_place);
    if (connects(Socket(), m_place))
        return;                // another one
    ::unlink(m_place.c_str()); // left by one that was killed
    Socket socket;
    const bool isBound = at(m_place, [&socket](const sockaddr* address, socklen_t size) {
        return ::bind(socket.handle(), address, size);
    });
    constexpr int kWaiting = 8;
    if (!isBound || ::listen(socket.handle(), kWaiting) != 0)
        return;
    m_socket = socket.release();
    auto* notifier = new QSocketNotifier(m_socket, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &RunningEditor::answer);
}

RunningEditor::~RunningEditor() {
    if (m_socket < 0)
        return;
    ::unlink(m_place.c_str());
    ::close(m_socket);
}

// The other start may be stopped in the middle of it: nobody waits for its bytes.
void RunningEditor::answer() {
    auto other =
        std::make_shared<Socket>(::accept4(m_socket, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (other->handle() < 0)
        return;
    auto* notifier = new QSocketNotifier(other->handle(), QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this,
            [this, notifier, other, bytes = QByteArray()]() mutable {
                if (other->isMoreToCome(bytes))
                    return;
                notifier->setEnabled(false);
                notifier->deleteLater();
                const QJsonDocument asked = QJsonDocument::fromJson(bytes);
                const bool isTaken = asked.isObject() && other->send({1, kTaken});
                other.reset(); // for whose end the other start waits
                if (isTaken)
                    tell({asked["file"].toString(), asked["style"].toString(), asked["source"].toString(),
                          asked["activation"].toString()});
            });
}

void RunningEditor::tell(const OpenRequest& request) {
    if (!m_receiver(request))
        m_kept.push_back(request);
}

void RunningEditor::setReceiver(Receiver receiver) {
    m_receiver = std::move(receiver);
    for (const OpenRequest& request : std::exchange(m_kept, {}))
        tell(request);
}

void RunningEditor::raise(QWidget& window, const OpenRequest& request) {
    if (!request.activation.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", request.activation.toUtf8());
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.raise();
    window.activateWindow();
}
