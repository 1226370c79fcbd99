#pragma once

#include "base/KorString.h"
#include "controls/KorComboBox.h"

class LinetypeModel;

/// The line type control: a combo box whose choices are line types, each a line in its own pattern beside its
/// name. It offers the host's own line types, those loaded from files, and entries defined by the program,
/// sorted by name; names that begin with a blank come first, with a no-break space last.
class KorLinetypeCombo : public KorComboBox {
    Q_OBJECT

public:
    explicit KorLinetypeCombo(QWidget* parent = nullptr);

    /// Takes all entries out, also those of `initializeList`.
    void RemoveAll();
    /// The folder in which `SetLinetypeFile` names a file, with backslashes.
    void SetSupportPath(const KorString& folder);
    void SetLinetypeFile(const KorString& name);
    /// Adds the line type of that name from the file, or all of them when it is "*". Returns how many were
    /// found. It takes the place of a host's line type of that name.
    int LoadLinetype(const KorString& name);
    /// Adds an entry with a pattern in the form of line type files, as "A,5,-2.5". A gap alone, or a pattern
    /// that cannot be read, draws no line.
    void DefineLinetype(const KorString& name, const KorString& pattern);
    /// Chooses an entry without announcing it; without regard to case. When there is none of that name, none
    /// is chosen, and false is returned.
    bool SelectItem(const KorString& name);
    /// The number that the host knows a line type by; 0 for others and for unknown ones.
    int getLineTypeByName(const KorString& name) const;
    /// How many entries the open list shows, and how wide it is at least.
    void setDefaultProperties();
    /// Adds the host's own line types.
    void initializeList();

    bool contains(const KorString& name) const;
    /// The name chosen, empty when none is.
    KorString selectedName() const;

Q_SIGNALS:
    /// The user chose an entry, perhaps the one that was chosen before.
    void chosen(const KorString& name);

protected:
    // Its list shows the samples wide.
    bool isSearched() const override { return false; }
    QVariant pictureOf(int place) const override;
    QSize pictureSize() const override { return {96, 16}; }
    void paintEvent(QPaintEvent* event) override;

private:
    LinetypeModel* m_model;
};
