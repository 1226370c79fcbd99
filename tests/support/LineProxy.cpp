#include "support/LineProxy.h"
#include "support/DatabaseServer.h"

#include <algorithm>
#include <array>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr int kTick = 10; // milliseconds, in which the end is noticed

int socketAt(const std::string& path, bool listens) {
    sockaddr_un address{AF_UNIX, {}};
    path.copy(address.sun_path, sizeof(address.sun_path) - 1);
    const int handle = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const auto* place = reinterpret_cast<const sockaddr*>(&address);
    const int code =
        listens ? ::bind(handle, place, sizeof(address)) : ::connect(handle, place, sizeof(address));
    if (code == 0 && (!listens || ::listen(handle, 20) == 0))
        return handle;
    ::close(handle);
    return -1;
}

bool isReady(int handle, int wait) {
    pollfd polled{handle, POLLIN, 0};
    return ::poll(&polled, 1, wait) > 0;
}

std::string peek(int from) {
    std::array<char, 65536> bytes{};
    const ssize_t size = ::recv(from, bytes.data(), bytes.size(), MSG_PEEK);
    return {bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0))};
}

// Hands on what is there. Returns false at the end of the line.
bool pass(int from, int to) {
    std::array<char, 65536> bytes{};
    const ssize_t size = ::read(from, bytes.data(), bytes.size());
    for (ssize_t done = 0; done < size;) {
        const ssize_t sent =
            ::send(to, bytes.data() + done, static_cast<std::size_t>(size - done), MSG_NOSIGNAL);
        if (sent <= 0)
            return false;
        done += sent;
    }
    return size > 0;
}

} // namespace

LineProxy::LineProxy(std::string server)
    : m_server(std::move(server)), m_listener(socketAt(m_folder.file(DatabaseServer::kSocket), true)),
      m_accepting([this] { accept(); }) {}

LineProxy::~LineProxy() {
    m_ends = true;
    m_accepting.join();
    for (std::thread& line : m_lines)
        line.join();
    ::close(m_listener);
}

void LineProxy::strikeAt(int request, eTrouble trouble, bool stays) {
    m_trouble = trouble;
    m_stays = stays;
    m_left = request;
}

void LineProxy::mend() {
    m_trouble = eTrouble::kNone;
    m_stays = false;
    m_left = 0;
    ++m_generation;
}

void LineProxy::accept() {
    while (!m_ends)
        if (isReady(m_listener, kTick)) {
            const int client = ::accept(m_listener, nullptr, nullptr);
            if (m_stays && hasStruck())
                ::close(client);
            else
                m_lines.emplace_back([this, client] { serve(client); });
        }
}

void LineProxy::actBefore(int client) {
    const std::scoped_lock lock(m_acting);
    if (m_action && peek(client).find(m_text) != std::string::npos)
        m_action();
}

// Returns whether the line goes on.
bool LineProxy::answer(int client, int server) {
    ++m_requests;
    if (const auto delay = m_delay.load(); delay.count() > 0)
        ::poll(nullptr, 0, static_cast<int>(delay.count()));
    actBefore(client);
    const bool strikes = m_left > 0 && --m_left == 0;
    if (!strikes)
        return pass(client, server);
    const eTrouble trouble = m_trouble;
    const int generation = m_generation;
    if (trouble == eTrouble::kCutAfter || trouble == eTrouble::kFreezeAfter) {
        if (!pass(client, server)) // the client leaves
            return false;
        while (!isReady(server, kTick) && !m_ends)
            ;
    }
    m_left = -1;
    const bool freezes = trouble == eTrouble::kFreezeBefore || trouble == eTrouble::kFreezeAfter;
    *m_frozen += freezes;
    while (freezes && !m_ends && generation == m_generation)
        ::poll(nullptr, 0, kTick);
    *m_frozen -= freezes;
    return false;
}

void LineProxy::serve(int client) {
    const int server = socketAt(m_server, false);
    bool goesOn = server >= 0;
    while (goesOn && !m_ends) {
        std::array<pollfd, 2> ends = {{{client, POLLIN, 0}, {server, POLLIN, 0}}};
        if (::poll(ends.data(), ends.size(), kTick) <= 0)
            continue;
        if (ends[1].revents)
            goesOn = pass(server, client);
        if (goesOn && ends[0].revents)
            goesOn = answer(client, server);
    }
    ::close(server);
    ::close(client);
}
