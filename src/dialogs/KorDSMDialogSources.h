#pragma once

#include <QDialog>

#include <filesystem>
#include <string>
#include <vector>

class QLabel;
class QLineEdit;

/// Asks where the databases of a data folder are, and tests connections to servers. OK writes it down; it
/// counts from the next start on.
class KorDSMDialogSources : public QDialog {
    Q_OBJECT

public:
    /// Numbers of the field and the button of the first source, those of the next ones follow; of the line
    /// that says what a test came to.
    static constexpr int kFirstField = 2370, kFirstTest = 2400, kOutcome = 2430;

    KorDSMDialogSources(std::filesystem::path folder, QWidget* parent);

    void accept() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Row {
        std::string source; ///< as it is named in the file
        QLineEdit* field;
    };

    void addRow(class QGridLayout& grid, const std::string& source, const QString& caption,
                const std::string& text);
    void test(const QLineEdit& field);
    void say(const QString& sentence, bool isFault);

    std::filesystem::path m_folder;
    std::vector<Row> m_rows;
    QLabel* m_outcome;
};
