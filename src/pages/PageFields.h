#pragma once

#include "pages/PagePart.h"
#include "records/KorOdbcKey.h"
#include "records/TableSchema.h"

#include <functional>
#include <limits>
#include <vector>

class KorDSMPage;
class KorLineEdit;
class QComboBox;

/// One row of a page's table: a control, the column that it shows and writes.
///
/// What the control's class says is enough for most rows: a check box shows 0 or 1, a combo box the run name
/// of the row that a reference column points at (its list is filled with that table's names) or the name of a
/// value, a line edit a text, or a number in the units of the current database.
struct PageField {
    int control = 0; ///< number of the control
    int column = 0;
    /// Radio buttons that stand for the values of the column: number of the button, value. The row's own
    /// control is not used then.
    std::vector<std::pair<int, int>> radios = {};
    /// Whether a combo lists its names as people sort them; else they stand in the order of the table.
    bool sorted = false;
    /// Whether a combo of references begins with an entry for none.
    bool optional = false;
    /// What may be typed at least, where that is more than what the column can hold.
    double lowest = -std::numeric_limits<double>::infinity();
};

/// The table of a page at work: fills lists, loads the record into the controls, hears changes, and writes
/// each through the guarded write. Rules of a page's own hang on `written`.
class PageFields : public PagePart {
    Q_OBJECT

public:
    /// The row that the fields edit.
    struct Row {
        eTableType table = kNoTable;
        KorOdbcKey key;
    };

    /// `page` is not owned. Without a `rowToEdit` function the fields edit the record of the page's item, and
    /// the item and its equal items take each new value.
    PageFields(KorDSMPage& page, std::vector<PageField> fields, std::function<Row()> rowToEdit = {});

    /// Connects the controls; once, when they exist.
    void connectControls();
    /// Fills the combo boxes of reference columns with the names of their tables, in list order.
    void fillLists();
    /// Shows the row in the controls. A reference that points nowhere leaves its combo without a choice.
    void load();
    /// The same for the field of one column; what was typed into others stays.
    void loadColumn(int column);

    const std::vector<PageField>& fields() const { return m_fields; }
    Row row() const;
    /// What of the row the fields show.
    ShownColumns shownColumns() const override;
    std::optional<FieldPlace> placeOf(const QWidget& control) const override;
    QWidget* bringUp(RowRef shown, int column) override;

Q_SIGNALS:
    /// The column was written.
    void written(int column);
    /// The user chose a value that was not written: the question was declined, or the write failed. The
    /// control still shows it, with the note that it is not stored.
    void refused(int column);

private:
    const Column* columnOf(const PageField& field) const;
    std::optional<CellValue> typedIn(const KorLineEdit& edit, const PageField& field) const;
    void connectField(const PageField& field);
    void loadField(const PageField& field, const StructRecord& record);
    void write(const PageField& field, QWidget& control, const CellValue& value);
    void onTextCommitted(const PageField& field, KorLineEdit& edit);
    void onEntryChosen(const PageField& field, QComboBox& combo);
    void showSamples();
    void showPictures();
    // What is not offered is listed where it is chosen.
    void fillCombo(const PageField& field, const Column& column, QComboBox& combo, std::int32_t chosen = 0);
    void loadCombo(const PageField& field, const Column& column, std::int32_t value, QComboBox& combo);

    KorDSMPage& m_page;
    std::vector<PageField> m_fields;
    std::function<Row()> m_rowToEdit;
    bool m_loading = false;
};
