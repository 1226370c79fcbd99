#pragma once

#include "controls/KorTabPage.h"
#include "model/KorDSMMessages.h"
#include "model/items/KorDSMDatabaseItem.h"
#include "operations/KorOdbcMan.h"
#include "records/WriteResult.h"
#include "session/FieldPlace.h"
#include "session/ShownColumns.h"

#include <optional>
#include <vector>

class FieldPlaces;
class PageHead;
class PagePart;

/// Base of every property page: the life of a page inside its group, the write of one field, the enable rule,
/// and the helpers that pages share. A page adds its controls, its record and its rules. Every change is
/// written to the database at once; a page buffers nothing.
class KorDSMPage : public KorTabPage, public KorMessageReceivers {
    Q_OBJECT

public:
    /// `templateId` lies between 1086 and 2321.
    KorDSMPage(QWidget* parent, int templateId, const KorString& title);
    ~KorDSMPage() override;

    /// The page that is shown, or null. What must be finished before changes are kept.
    static KorDSMPage* currentPage();

    /// The page's own item-type code, which it sends with its notices.
    int pageCode() const { return m_pageCode; }
    /// The page's own topic of the help, which F1 opens while the focus is in the page.
    KorString helpTopic() const;
    /// A page of another group that must hear of changes made here. Not owned; null is ignored.
    void addLinkedPage(KorDSMPage* page);

    /// The lists are filled again at the next show: names that they show have changed.
    void requestInit() { m_needsInit = true; }
    /// Another page of the group changed something: the lists are refreshed at the next show.
    void requestRefresh(bool needed) { m_needsRefresh = needed; }
    bool needsRefresh() const { return m_needsRefresh; }
    /// Dialogs that show a page only to look at it set this to false.
    void setEditable(bool editable) { m_editable = editable; }
    /// Whether the window of the page can go to the records that it refers to.
    bool leadsElsewhere() const { return m_editable; }
    /// Whether the page allows editing and the current source does.
    bool isEditable() const { return m_editable && KorOdbcMan::getEditableStatus(); }

    /// Lets the page take what was typed and store it.
    void finishEditing();
    /// Whether a part holds something that is written only when the page is left.
    bool hasEditedParts() const;
    /// Shows who else is changing the record now.
    void showColleagues();
    /// Lets the page forget what was typed and is not stored yet.
    void dropEdits();

    void OnActivate(int active) override;
    void OnShow(int show) override;
    bool PreTranslateMessage(QKeyEvent* event) override;
    /// Writes an edit that is stored only when the page is left. Does nothing when `discard` is true.
    virtual void storePendingChanges(bool discard);
    virtual bool fillLists() { return true; }
    virtual bool refreshLists() { return true; }
    /// Copies the record of the item into the controls.
    virtual bool loadData() { return true; }
    virtual void afterLoad() {}
    /// Loads the page's data again, with the names and letters of what it then shows.
    void reload();
    /// Brings every control to the editable state.
    virtual void enableControls();
    /// Tells the main dialog that something was changed.
    virtual void notifyModified();
    /// Tells the main dialog whether there is anything to apply: what is pending, or is being typed here.
    void notifyTyping();
    /// Tells the main dialog that the other pages of the group show something changed.
    virtual void setOtherPagesModified(bool modified);
    /// The Delete key; true when the page has deleted something.
    virtual bool onDeleteKey() { return false; }

    /// What the page shows, of its item's record and of others. That of its fields and labels; a page adds
    /// what it shows and writes by other means.
    virtual std::vector<ShownColumns> shownColumns() const;
    /// Marks the tab when something that the page shows is not stored yet, and only then.
    void updateMark();

    /// The cell that is edited in this control, or in the one that it is a part of; nothing where it shows
    /// none.
    std::optional<FieldPlace> fieldAt(const QWidget& control) const;
    /// Gives the focus to the control of the cell, which the shown page may have. Returns whether it has it.
    bool focusField(RowRef row, int column);

    /// Writes one column of the item's own record through the guarded write. On success the item and all
    /// that show the same record take the new value. Fails without a sentence where no record is shown.
    WriteResult writeField(int column, const CellValue& value);

    /// Says beside a control that the choice it shows is not stored, because the user declined the question
    /// or the write failed; or takes that back, for radio buttons of the whole group.
    void markStored(QWidget* control, bool stored);
    /// Writes as `writeField` does and marks the control accordingly. Returns whether the value is stored.
    bool writeFrom(QWidget* control, int column, const CellValue& value);

    /// Tooltip text of a control; empty when it has none.
    KorString getTooltip(int controlId) const;
    void addTooltip(int controlId, int promptNumber);
    /// Sets the text of a label, button or group box.
    void setCaption(int controlId, int promptNumber);

Q_SIGNALS:
    /// The control that has the focus shows another cell now.
    void fieldChanged();

protected:
    /// A control that the page fills and hears itself.
    struct OwnField {
        int control = 0; ///< number
        RowRef row;
        int column = 0;
    };
    virtual std::vector<OwnField> ownFields() const { return {}; }

    /// What every page shows, and these columns of the item's own record.
    std::vector<ShownColumns> shownWith(std::vector<int> columns) const;
    /// The item that the page shows, or null.
    KorDSMDatabaseItem* item() const { return getData().as<KorDSMDatabaseItem>(); }

    /// Enables a control where the source may be edited; disables it always.
    void enableControl(int controlId, bool enable);
    /// Gives a button its picture, another one for while it is disabled, and a tooltip by which it is also
    /// known to those who do not see the picture.
    void setButton(int controlId, int bitmap, int disabledBitmap, int tooltipPrompt);
    /// The key that renames in the tree renames by this button what the page alone can rename.
    void setRenameKey(int controlId);
    /// Sends a list-change notice to the linked page at `index`, or to all of them when it is -1.
    void notifyLinkedPages(const KorString& name, int what, int index);

    /// Numbers in text fields, in the units of the current database.
    static std::optional<double> parseValue(const KorString& text, int unitKind);
    static KorString formatValue(double value, int unitKind);
    /// Shows the length in a field as the database's units print it.
    void reformatField(int controlId);
    /// Pixel widths for columns of these percentages of `width`: each gets its rounded share, and the one
    /// that brings the sum within 20 pixels of `width` gets exactly the rest.
    static std::vector<int> columnWidths(int width, const std::vector<int>& percentages);

    int m_pageCode = KorDSMDefines::kNoType;

private:
    std::vector<PagePart*> parts() const;
    std::vector<FieldPlaces*> places() const;
    void loadHead();

    std::vector<KorDSMPage*> m_linkedPages;
    SourceId m_listsFrom; // the source whose names the lists hold
    bool m_needsInit = true;
    bool m_needsRefresh = false;
    bool m_editable = true;
    PageHead* m_head; // first of all controls, so that the Tab key stops there first
};
