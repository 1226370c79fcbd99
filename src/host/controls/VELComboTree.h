#pragma once

#include "controls/KorComboBox.h"
#include "controls/KorThumbnails.h"
#include "controls/KorTreeModel.h"

#include <QPointer>

#include <functional>
#include <unordered_map>

class VELComboTreePopup;

/// A combo box whose drop-down is a tree. Entries are named by their path, the names from the top down,
/// joined by the path delimiter. In the drop-down, typing finds entries; Enter or a click chooses one.
/// With the drop-down closed the arrow keys step from entry to entry, and typing opens it.
class VELComboTree : public KorComboBox {
    Q_OBJECT

public:
    explicit VELComboTree(QWidget* parent = nullptr);
    ~VELComboTree() override;

    /// What joins the names of a path. It occurs in no name, and is never shown.
    static KorString GetPathDelimiter();

    void setImageList(KorImageListPtr images);
    /// What is said of an entry, by its name, while the pointer rests on it in the drop-down; an empty text
    /// for nothing.
    using Hint = std::function<QString(const KorString& name)>;
    void setHint(Hint hint) { m_hint = std::move(hint); }
    /// Whether the closed combo shows the whole path of the chosen entry. Off at first: its name only.
    void setDisplayFullPath(bool on);

    /// Adds an entry by its path; names on the way that do not exist yet are added without picture and
    /// data. A path that exists takes the new picture and data. Returns the entry.
    KorTreeHandle addEntry(const KorString& path, int image = -1, const KorEntryData& data = {});
    /// Deletes an entry with all below it. Returns false when there is no such path.
    bool deleteEntry(const KorString& path);
    /// Gives the entry another name (not a path). Returns false when there is no such path, or when a
    /// sibling has that name already.
    bool renameEntry(const KorString& path, const KorString& name);
    void deleteAll();
    /// Entries that are made when they are first needed: opened, stepped through, or asked for by path, name
    /// or number. `fill` makes all of them, in a combo that is empty; it is called at most once. What was
    /// chosen stays chosen where it is there then.
    ///
    /// Until then `selectPath` takes the path as it is, and shows it with the picture `image`: a list of tens
    /// of thousands of entries costs nothing where nobody opens it.
    void fillWhenNeeded(std::function<void(VELComboTree&)> fill, int image);

    /// What thumbnails of the entries in the drop-down show; without a function there are none.
    using SubjectOf = std::function<KorThumbnails::Subject(KorTreeHandle entry)>;
    void setThumbnails(SubjectOf subjectOf) { m_thumbnailOf = std::move(subjectOf); }

    /// The entry of a path, null when there is none.
    KorTreeHandle findEntry(const KorString& path) const;
    KorString getPath(KorTreeHandle entry) const;
    KorString getEntryText(KorTreeHandle entry) const;
    KorEntryData getEntryData(KorTreeHandle entry) const;
    /// Number of children of an entry; with null, of the top level.
    int childCount(KorTreeHandle parent) const;
    KorTreeHandle getChildAt(KorTreeHandle parent, int index) const;

    /// Chooses an entry without announcing it; an empty path chooses none. Returns false, and chooses
    /// none, when there is no such path.
    bool selectPath(const KorString& path);
    /// The same for the first entry of that name that can be chosen, wherever it stands.
    bool selectName(const KorString& name);
    /// The path of the chosen entry, an empty text when there is none.
    KorString getSelectedPath() const;
    KorTreeHandle selectedEntry() const { return m_selected; }

    void showPopup() override;
    void hidePopup() override;

Q_SIGNALS:
    /// The user chose an entry (perhaps the one that was chosen already).
    void entrySelected(KorTreeHandle entry);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void initStyleOption(QStyleOptionComboBox* option) const override;

private:
    struct ChildKey {
        KorTreeHandle parent;
        KorString name;
        bool operator==(const ChildKey&) const = default;
    };
    struct ChildHash {
        std::size_t operator()(const ChildKey& key) const noexcept {
            return std::hash<KorString>{}(key.name) ^ (std::hash<KorTreeHandle>{}(key.parent) * 31);
        }
    };

    KorTreeHandle insertPath(const KorString& path);
    KorTreeHandle entryOf(const KorString& path) const;
    void fillNow() const;
    KorTreeHandle child(KorTreeHandle parent, const KorString& name) const;
    bool canChoose(KorTreeHandle entry) const;
    void choose(KorTreeHandle entry);
    void setSelected(KorTreeHandle entry);
    void showSelected();
    void step(int by);
    void openPopup(const QString& search);

    KorTreeModel* m_model;
    KorImageListPtr m_images;
    std::unordered_map<ChildKey, KorTreeHandle, ChildHash> m_children;
    QPointer<VELComboTreePopup> m_popup;
    KorTreeHandle m_selected = nullptr;
    bool m_displayFullPath = false;
    std::function<void(VELComboTree&)> m_fill; // empty: the entries are there
    int m_unfilledImage = -1;
    SubjectOf m_thumbnailOf;
    Hint m_hint;
};
