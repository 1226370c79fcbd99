#pragma once

#include "support/OtherProgram.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QProcessEnvironment>
#include <QStringList>

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

    std::filesystem::path data() const { return folder() / "data"; }
    std::filesystem::path folder() const { return m_folder.path(); }
    /// A file of the test's folder as an argument of the program.
    QString named(const std::string& file) const { return QString::fromStdString(m_folder.file(file)); }
    /// Runs SQL on a database file of the data folder.
    void sql(const std::string& file, const std::string& statements) {
        OtherProgram(data() / file).run(statements);
    }

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    std::function<void()> inChild; ///< runs in the program's process before the program

private:
    TempFolder m_folder;
};
