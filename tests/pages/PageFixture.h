#pragma once

#include "controls/KorControls.h"
#include "controls/KorFieldNote.h"
#include "controls/KorInfoCtrl.h"
#include "controls/KorTabCtrl.h"
#include "data/StyleDatabases.h"
#include "model/KorDSMMessages.h"
#include "model/items/KorDsmItems.h"
#include "pages/KorDSMPage.h"
#include "session/KorDSMGuardedWrite.h"
#include "support/FreshProcess.h"
#include "support/Widgets.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QTimer>

/// Pages on copies of the sample databases, in a tab control in a window, driven by real clicks and keys. The
/// User database is current and can be edited, Standard cannot. What pages tell the editor is
/// counted.
class PageFixture : public FreshProcess, public KorMessageTarget {
protected:
    PageFixture();
    ~PageFixture() override;
    /// Leaves the shown page. What was reported to the user (a missing text or picture, a file that could not
    /// be read) is a failure.
    void TearDown() override;

    /// Makes another source current. Call it before `open`.
    void useSource(SourceId id) { databases.setCurrentSource(id); }

    /// The row of that name in the current source; an empty name is the first row. It must exist.
    template <typename R>
    const R& row(const KorString& name = {}) {
        return static_cast<const R&>(rowOf(tableOf<R>, name));
    }
    /// The row of a key, or null.
    template <typename R>
    const R* rowOfKey(std::int32_t key) {
        return static_cast<const R*>(databases.here()->table(tableOf<R>).find(KorOdbcKey(key)));
    }
    /// A new item on that row, as the tree would hold it. It lives as long as the test.
    template <typename Item>
    Item& item(const KorString& name = {}) {
        auto made = std::make_unique<Item>();
        made->updateRecord(row<typename Item::Record>(name));
        Item& result = *made;
        m_items.push_back(std::move(made));
        return result;
    }
    /// Makes a cell of the current source what another program might have stored, allowed or not.
    void store(eTableType table, std::int32_t key, int column, const CellValue& value);
    /// Changes a row behind the page's back, outside what the test looks at afterwards.
    void arrange(KorDSMDatabaseItem& shown, int column, const CellValue& value);

    /// Makes the pages, one group in this order, and shows the first one on the item.
    template <typename Page, typename... Others>
    Page& open(KorDSMDatabaseItem& shown) {
        auto* first = new Page(&m_window);
        m_group = std::make_unique<TabContent>("Tabs", "Group");
        m_group->addPage(first);
        (m_group->addPage(new Others(&m_window)), ...);
        m_group->createPages();
        show(*m_group, shown);
        return *first;
    }
    /// Shows a group that the test owns on the item.
    void show(TabContent& group, KorDSMDatabaseItem& shown);
    /// Shows another item, or the same anew.
    void show(KorDSMDatabaseItem& shown);
    /// Shows the page of that index of the group.
    void turnTo(int index) { m_tabs->currentContent()->setCurrentIndex(index); }
    /// The shown page is left as on OK.
    void leave() { m_tabs->finishCurrentPage(); }
    KorDSMPage& page() { return static_cast<KorDSMPage&>(*m_tabs->currentPage()); }

    /// A control of the shown page; it must exist and be of that class.
    template <typename T = QWidget>
    T& control(int id) {
        T* found = KorControls::find<T>(&page(), id);
        if (!found)
            throw std::runtime_error("no such control: " + std::to_string(id));
        return *found;
    }
    /// Whether the user can change it: a field that can only be read and copied counts as not enabled.
    bool isEnabled(int id);
    bool isShown(int id) { return control(id).isVisible(); }
    bool isChecked(int id) { return control<QAbstractButton>(id).isChecked(); }
    /// As it is read: without the mark of its letter.
    std::string textOf(int id);

    /// A click with the mouse, on the indicator of check boxes and radio buttons.
    void click(int id);
    /// Replaces the text of a field and presses Return.
    void type(int id, const QString& text);
    /// Keys into whatever has the focus; also such that no keyboard has.
    static void keys(QWidget& target, const QString& text);
    /// Opens the list of a combo box, goes to the text and presses Return.
    void choose(int id, const QString& text);

    /// Answers the next question for a name by typing this one.
    static void answerName(const QString& name);

    /// What was written and not taken back, oldest first.
    std::vector<const PendingStep*> steps() { return databases.pending().steps(); }
    /// Whether exactly this was written, and nothing else.
    testing::AssertionResult wroteOnly(const KorDSMDatabaseItem& item, int column, const CellValue& value);
    testing::AssertionResult wroteOnly(eTableType table, std::int32_t key, int column,
                                       const CellValue& value);
    testing::AssertionResult wroteNothing();
    /// Takes back all that was written, and shows the item as it is then.
    void takeBack(KorDSMDatabaseItem& shown);

    void onMessage(const KorMessage& message) override { m_messages.push_back(message.number); }
    /// How often the editor was told this.
    template <typename Message>
    long told() const {
        return std::ranges::count(m_messages, Message::kNumber);
    }

    /// What the user answers when asked before a shared row is written, and which rows were asked about.
    int m_answer = KorDSMGuardedWrite::kWrite;
    std::vector<std::pair<eTableType, std::int32_t>> m_asked;

    TempFolder m_folder;
    StyleDatabases databases;
    QWidget m_window;

private:
    const StructRecord& rowOf(eTableType table, const KorString& name);

    std::vector<std::unique_ptr<KorDSMDatabaseItem>> m_items;
    std::unique_ptr<TabContent> m_group;
    KorTabCtrl* m_tabs;
    std::vector<int> m_messages;
};
