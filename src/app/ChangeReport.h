#pragma once

#include "app/Commands.h"
#include "app/RowChoice.h"

#include <QJsonObject>

/// What a command changed, or would change in a dry run, for people and for programs. While it lives, whoever
/// is asked about a shared record agrees: the command has asked for --shared before.
class ChangeReport {
public:
    /// `command` is its name for programs.
    ChangeReport(const char* command, const ChangeOptions& options);
    ~ChangeReport();
    ChangeReport(const ChangeReport&) = delete;
    ChangeReport& operator=(const ChangeReport&) = delete;

    /// Says what was done, for people.
    void say(const KorString& sentence) { m_sentences.push_back(sentence); }
    /// The record that the command is about.
    void isAbout(SourceId source, RowRef row);
    /// Something more for programs.
    void add(const char* name, const QJsonValue& value) { m_document[name] = value; }

    /// Says which records of kinds that users make were appended beside the one that the command is about.
    void sayCompanions();
    /// Stores what is pending, or drops it in a dry run, and prints. Returns an `eExitCode`; what was stored
    /// in a database that cannot be read whole counts as failed, and is said.
    int finish();
    /// Drops what is pending and complains. Returns an `eExitCode`.
    static int refuse(const KorString& sentence, eExitCode code = kExitFailed);

private:
    void listSteps();
    bool noteWhole();
    void tellDryRun();
    int tellStored();

    const ChangeOptions& m_options;
    SourceId m_source;
    RowRef m_row;
    QJsonObject m_document;
    std::vector<KorString> m_sentences;
};
