#include "support/DatabaseServer.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <fstream>
#include <thread>
#include <vector>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr uid_t kNobody = 65534; // a server does not run as root

std::string programs() {
    std::string newest;
    std::error_code none;
    for (const auto& version : std::filesystem::directory_iterator("/usr/lib/postgresql", none))
        newest = std::max(newest, (version.path() / "bin").string());
    return newest;
}

/// Starts a program whose standard error comes out of `output`.
pid_t start(const std::vector<std::string>& words, int& output) {
    std::array<int, 2> ends{};
    EXPECT_EQ(pipe(ends.data()), 0);
    std::vector<char*> argv;
    for (const std::string& word : words)
        argv.push_back(const_cast<char*>(word.c_str()));
    argv.push_back(nullptr);
    const pid_t process = fork();
    if (process == 0) {
        if (geteuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0))
            _exit(1);
        prctl(PR_SET_PDEATHSIG, SIGQUIT);
        dup2(ends[1], STDOUT_FILENO);
        dup2(ends[1], STDERR_FILENO);
        close(ends[0]);
        close(ends[1]);
        execv(argv.front(), argv.data());
        _exit(1);
    }
    close(ends[1]);
    output = ends[0];
    return process;
}

/// Reads what a program says until it says `phrase`, or ends. Returns all of it.
std::string readUntil(int output, const std::string& phrase) {
    std::string text;
    std::array<char, 1024> bytes{};
    for (ssize_t size = 1; size > 0 && (phrase.empty() || text.find(phrase) == std::string::npos);) {
        size = read(output, bytes.data(), bytes.size());
        text.append(bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    }
    return text;
}

} // namespace

DatabaseServer& DatabaseServer::instance() {
    static DatabaseServer server;
    EXPECT_GT(server.m_process, 0)
        << "there is no database server to test with; install what tools/packages.txt lists";
    return server;
}

DatabaseServer::DatabaseServer() {
    const std::string bin = programs();
    const std::string data = m_folder.file("data");
    const bool isRoot = geteuid() == 0;
    EXPECT_EQ(isRoot ? chown(m_folder.path().c_str(), kNobody, kNobody) : 0, 0);
    if (bin.empty())
        return;
    int output = -1;
    int status = 1;
    const pid_t init = start({bin + "/initdb", "-D", data, "-U", kUser, "-A", "trust", "-E", "UTF8",
                              "--locale=C", "--no-sync", "--no-instructions"},
                             output);
    const std::string said = readUntil(output, "");
    close(output);
    waitpid(init, &status, 0);
    EXPECT_EQ(status, 0) << said;
    std::ofstream(data + "/pg_hba.conf")
        << "local all " << kGuarded << " scram-sha-256\nlocal all all trust\n";
    m_process = start({bin + "/postgres", "-D", data, "-k", m_folder.path(), "-c", "listen_addresses=", "-c",
                       "fsync=off", "-c", "log_min_messages=log", "-c", "log_checkpoints=off", "-c",
                       "max_connections=50", "-c", "shared_buffers=16MB"},
                      output);
    const std::string log = readUntil(output, "ready to accept connections");
    EXPECT_NE(log.find("ready"), std::string::npos) << log;
    // A server that cannot get rid of what it says stands still.
    std::thread([output] {
        readUntil(output, "");
        close(output);
    }).detach();
}

DatabaseServer::~DatabaseServer() {
    if (m_process <= 0)
        return;
    kill(m_process, SIGQUIT);
    waitpid(m_process, nullptr, 0);
}

std::string DatabaseServer::connectionBy(const std::filesystem::path& folder, const std::string& schema,
                                         const std::string& user) {
    return "Driver=PostgreSQL Unicode;Server=" + folder.string() + ";Database=postgres;UID=" + user +
           ";Schema=" + schema;
}
