#pragma once

#include "base/Result.h"
#include "dialogs/KorDSMDialog.h"
#include "records/KorDSNDefinitions.h"

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

class QBoxLayout;
class QGridLayout;
class QLabel;
class QLineEdit;

/// Asks where the databases of a data folder are, and tests connections to servers. OK writes it down.
class KorDSMDialogSources : public KorDSMDialog {
    Q_OBJECT

public:
    /// Numbers of the field and the button of the first source, those of the next ones follow; of the line
    /// that says what a test came to.
    static constexpr int kFirstField = 2370, kFirstTest = 2400, kOutcome = 2453;

    KorDSMDialogSources(std::filesystem::path folder, QWidget* parent);

    /// The line in which the dialog says something, for who has more to say there.
    QBoxLayout* saidLine() const;
    /// The sources that are to be elsewhere, when the dialog was accepted.
    const std::vector<SourceId>& moved() const { return m_moved; }

    void accept() override;

private:
    struct Row {
        SourceId id;
        std::string source; ///< as it is named in the file
        std::string text;   ///< that stood there before
        QLineEdit* field;
    };

    void addRow(QGridLayout& grid, Row row, const QString& caption);
    void test(const QLineEdit& field);
    Result<> makeUserDatabase(const std::map<std::string, std::string>& texts,
                              std::filesystem::path& made) const;
    void say(const QString& sentence, bool isFault);

    std::filesystem::path m_folder;
    std::vector<Row> m_rows;
    std::vector<SourceId> m_moved;
    std::set<std::string> m_told; // files of which it was told that they are not there
    QLabel* m_outcome;
};
