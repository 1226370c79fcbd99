#pragma once

#include "dialogs/KorDSMDialog.h"

class CKorlinetypelistctrl;

/// Lets the user pick one line type out of a line type file. The caller sets where to start, runs the dialog,
/// and after OK reads the line type's name and the reference to its file: the bare name of a file that lies
/// in the default folder, else its whole path. All paths have backslashes.
class KorDSMDialogLoadLinetype : public KorDSMDialog {
    Q_OBJECT

public:
    explicit KorDSMDialogLoadLinetype(QWidget* parent);

    void setDirectory(const KorString& directory) { m_directory = directory; }
    void setFileName(const KorString& fileName) { m_fileName = fileName; }
    /// Files in this folder are returned by name only.
    void setDefaultDirectory(const KorString& directory) { m_defaultDirectory = directory; }
    void setSelectedLinetype(std::wstring_view name) { m_selectedLinetype = KorString::fromWide(name); }

    const KorString& directory() const { return m_directory; }
    const KorString& fileName() const { return m_fileName; }
    /// Empty until the user picks a line type.
    const KorString& selectedLinetype() const { return m_selectedLinetype; }
    /// What to store in a record; empty before OK.
    const KorString& fileReference() const { return m_fileReference; }

    /// Does nothing while no line type is picked.
    void accept() override;
    void setVisible(bool visible) override;

private:
    void OnInitDialog();
    void fillList();
    void showMembers();
    void onFileButton();

    CKorlinetypelistctrl* m_list = nullptr;
    KorString m_fileName;
    KorString m_directory;
    KorString m_defaultDirectory;
    KorString m_selectedLinetype;
    KorString m_fileReference;
};
