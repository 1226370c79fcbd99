#pragma once

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QProcessEnvironment>
#include <QStringList>
#include <QTemporaryDir>

#include <filesystem>
#include <functional>

/// What a run of the program gave back.
struct ProgramRun {
    int exitCode = -1;
    QString output;
    QStringList complaints; ///< lines of standard error

    QJsonDocument json() const { return QJsonDocument::fromJson(output.toUtf8()); }
};

/// A data folder of its own with a Standard, a User and an add-in database, and the program run on it.
class ProgramTest : public testing::Test {
protected:
    void SetUp() override;

    ProgramRun run(const QStringList& arguments);
    /// The same without the option that names the data folder.
    ProgramRun runBare(const QStringList& arguments);

    std::filesystem::path data() const { return m_folder / "data"; }
    std::filesystem::path folder() const { return m_folder; }
    /// Runs SQL on a database file of the data folder, as another program would.
    void sql(const std::string& file, const std::string& statements);

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    std::function<void()> inChild; ///< runs in the program's process before the program

private:
    QTemporaryDir m_temporary;
    std::filesystem::path m_folder;
};

/// The content of a file.
std::string contentOf(const std::filesystem::path& file);
void writeFile(const std::filesystem::path& file, const std::string& content);
