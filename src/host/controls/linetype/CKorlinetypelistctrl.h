#pragma once

#include "base/KorString.h"

#include <QListView>

class LinetypeModel;

/// What the list says in words. `%s` stands for the file's name, `%d` for a number.
struct LinetypeListPrompts {
    KorString name; ///< what the list is called, for screen readers
    KorString unreadable;
    KorString noPlainFile;
    KorString noLinetypes;
    KorString damaged;  ///< `%d` definitions were left out
    KorString cutShort; ///< the file is too large, or damaged from some place on
};

/// A list of the line types of a file, each shown as a line in its own pattern beside its name. Where a file
/// has none, the list says why.
class CKorlinetypelistctrl : public QListView {
    Q_OBJECT

public:
    explicit CKorlinetypelistctrl(QWidget* parent = nullptr);

    /// Takes all line types out of the list, and the choice with them.
    void RemoveAll();
    /// The folder in which `SetLinetypeFile` names a file, with backslashes.
    void SetSupportPath(const KorString& folder);
    void SetLinetypeFile(const KorString& name);
    /// Adds the line type of that name from the file, or all of them when it is "*". Returns how many were
    /// found.
    int LoadLinetype(const KorString& name);
    /// Puts the texts in their places; they must be set before.
    void setDefaultPrompts();
    void setPrompts(LinetypeListPrompts prompts) { m_prompts = std::move(prompts); }

    int count() const;
    /// The name of the line type that is chosen, empty when none is.
    KorString selectedLinetype() const;
    /// Chooses a line type and shows it; returns false when it is not in the list.
    bool selectLinetype(const KorString& name);
    /// What the user should know about the file that was read; empty when there is nothing.
    KorString message() const;

Q_SIGNALS:
    /// The choice changed; the name is empty when none is left.
    void linetypePicked(const KorString& name);
    /// Double click or Enter on a line type.
    void linetypeActivated(const KorString& name);

protected:
    void paintEvent(QPaintEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    LinetypeModel* m_model;
    LinetypeListPrompts m_prompts;
};
