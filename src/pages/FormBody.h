#pragma once

#include "pages/FormTable.h"
#include "pages/LabelField.h"
#include "pages/PageFields.h"

#include <QPointer>
#include <QVBoxLayout>
#include <QWidget>

#include <functional>

class KorDSMPage;
class QGroupBox;
class QLabel;
class RecordButtons;

/// The fields of a form, laid out in frames: captions with units, references by name with buttons for the
/// record that they name, values by their names. What a reference leads to is edited beside it and not to be
/// seen while there is nothing.
class FormBody : public QWidget {
    Q_OBJECT

public:
    /// The selected row of a list of parts; key 0 for none.
    using FindPart = std::function<RowRef(eTableType parts)>;

    /// `page`, which is not owned, shows records of `table`. `groups` must outlive the form. Controls are
    /// numbered from `firstControl`: those of the page's own record by their column, the others after these.
    FormBody(KorDSMPage& page, const std::vector<FormGroup>& groups, eTableType table, int firstControl,
             FindPart part = {});
    ~FormBody() override;

    /// Lets the fields take all of the form where something else stands beside that.
    void takeWholeWidth() { m_columns->setStretch(m_columns->count() - 1, 0); }
    /// Puts a list between the frames and those that stand below.
    void addList(QWidget& list) { m_below->insertWidget(m_listCount++, &list); }
    /// Connects the controls; once, when the form lies in its page.
    void connectControls();
    void fillLists();
    /// Shows the records as they are, and what they lead to.
    void load();
    /// Brings all controls to the state of the page and of the values they depend on.
    void enable();
    /// For labels, which are written when the page is left.
    void store(bool discard);
    void forgetEdits();

Q_SIGNALS:
    /// A column of the page's own record was written.
    void written(int column);

private:
    /// Where the fields of one record come from.
    struct Origin {
        eTableType part = kNoTable;
        RowPath path;

        bool operator==(const Origin&) const = default;
        bool isOwn() const { return part == kNoTable && path.empty(); }
    };
    struct Section {
        Origin origin;
        const TableSchema* table = nullptr;
        std::vector<PageField> declared;
        QPointer<PageFields> fields;
    };
    struct Line {
        const FormField* field = nullptr;
        std::size_t section = 0;
        const Column* column = nullptr;
        QGroupBox* box = nullptr;  // in which it stands
        QWidget* row = nullptr;    // caption and control
        QLabel* caption = nullptr; // null for a check box, which has its own
        QWidget* control = nullptr;
    };
    struct Frame {
        QGroupBox* box = nullptr;
        const FormGroup* group = nullptr;
    };

    eTableType startOf(eTableType part) const { return part == kNoTable ? m_table : part; }
    RowRef rowOf(const Origin& origin) const;
    std::size_t sectionFor(const Origin& origin);
    QString captionOf(const FormGroup& group) const;
    void addPictures(const FormGroup& group, QVBoxLayout& column);
    void addFrame(const FormGroup& group, QVBoxLayout& column);
    void addLine(const FormGroup& group, const FormField& field, QGroupBox& box);
    static QWidget* makeRow(const Line& line, QWidget& shown);
    QWidget* makeControl(const Line& line);
    QWidget* withButtons(const Line& line);
    void onWritten(std::size_t section, int column);
    bool isLive(const Line& line) const;
    /// Shows what there is something to edit for. Returns whether other controls are shown than before.
    bool updateShown();
    void updateLive();
    void alignCaptions();

    KorDSMPage& m_page;
    const eTableType m_table;
    FindPart m_part;
    int m_nextOwn;
    int m_nextOther;
    std::vector<Section> m_sections;
    std::vector<Line> m_lines;
    std::vector<Frame> m_frames;
    std::vector<QPointer<LabelField>> m_labels;
    std::vector<RecordButtons*> m_records;
    QHBoxLayout* m_columns;
    QVBoxLayout* m_left;
    QVBoxLayout* m_right;
    QVBoxLayout* m_below;
    int m_listCount = 0;
    QStringList m_aligned; // the captions that were measured
    QFont m_alignedFont;
};
