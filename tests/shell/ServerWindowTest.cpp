#include "controls/KorLineEdit.h"
#include "controls/VELComboTree.h"
#include "data/exchange/CopiedDatabase.h"
#include "data/store/SqliteStore.h"
#include "data/store/odbc/OdbcStore.h"
#include "dialogs/KorDSMDialogConflicts.h"
#include "dialogs/KorDSMDialogPassword.h"
#include "dialogs/KorDSMDialogSources.h"
#include "model/KorDSMBusy.h"
#include "session/DataFolder.h"
#include "session/KorDSMCommit.h"
#include "session/KorDSMLockWait.h"
#include "shell/EditorFixture.h"
#include "support/DatabaseServer.h"
#include "support/LineProxy.h"

#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTimer>
#include <QTreeView>

#include <fstream>

// What the window does with styles on a server.

namespace {

class ServerWindow : public EditorFixture {
protected:
    ServerWindow() {
        OdbcDatabase database(address(m_server.connection(m_schema)), {});
        EXPECT_EQ(database.connect().error, "");
        EXPECT_EQ(OdbcSchema(database).create().error, "");
        const auto from = SqliteStore::open(path("user.dsdb"), SqliteStore::eMode::kRead).store;
        const auto to = connect(m_server.connection(m_schema));
        EXPECT_EQ(to->begin().error, "");
        EXPECT_EQ(CopiedDatabase::copy(*from, *to, [](const TableSchema&, int) { return true; }).error, "");
        EXPECT_EQ(to->commit().error, "");
        m_databases = std::make_unique<StyleDatabases>();
        DataFolder(m_folder.path() / m_data).open();
        m_databases->addSource(SourceId::user(),
                               connect(DatabaseServer::connectionBy(m_line.folder(), m_schema)));
        EXPECT_EQ(m_databases->source(SourceId::user())->readAll().error, "");
        m_others.addSource(SourceId::user(), connect(m_server.connection(m_schema)));
        m_others.setCurrentSource(SourceId::user());
    }
    ServerAddress address(const std::string& connection) {
        return ServerAddress::parse(connection, "a test").value;
    }
    std::unique_ptr<StyleStore> connect(const std::string& connection) {
        using namespace std::chrono_literals;
        OpenedServer opened =
            OdbcStore::open(address(connection), OdbcStore::eMode::kWrite, {10s, 20s, 0ms, 0ms});
        EXPECT_EQ(opened.error, "");
        return std::move(opened.store);
    }
    /// Runs statements in the schema, of which nobody is told.
    void run(const std::string& sql) {
        OdbcDatabase database(address(m_server.connection(m_schema)), {});
        EXPECT_EQ(database.connect().error, "");
        EXPECT_EQ(database.execute("SET search_path = " + m_schema + "; " + sql).error, "");
    }
    KorOdbcKey styleNamed(const char* name) {
        return KorOdbcKey(m_others.here()->table(kTableDetailStyle).find(KorString(name))->key);
    }
    /// Somebody else stores something.
    void others(KorOdbcKey style, int column, const CellValue& value) {
        for (OutsideChange& change : m_others.refreshChanged())
            EXPECT_EQ(change.error, "");
        EXPECT_EQ(m_others.setCell(kTableDetailStyle, style, column, value), WriteResult::kWritten);
        EXPECT_TRUE(m_others.keepTable(kTableDetailStyle));
    }
    const StructDetailStyle& shown(KorOdbcKey style) {
        return *static_cast<const StructDetailStyle*>(
            m_databases->source(SourceId::user())->table(kTableDetailStyle).find(style));
    }
    template <typename Condition>
    static void waitFor(Condition isSo) {
        bool isOver = false;
        QTimer end;
        end.setSingleShot(true);
        QObject::connect(&end, &QTimer::timeout, [&isOver] { isOver = true; });
        end.start(std::chrono::minutes(3));
        while (!isSo()) {
            if (isOver)
                throw std::runtime_error("what was waited for did not come");
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }
    /// Chooses another place for User in the dialog of databases, tested before where `tests`.
    void move(const std::string& place, bool tests) {
        bool isDone = false;
        whenShown<KorDSMDialogSources>([&, tests](KorDSMDialogSources& dialog) {
            constexpr int kUser = 3; // behind Standard and two add-ins
            auto* field = KorControls::find<QLineEdit>(&dialog, KorDSMDialogSources::kFirstField + kUser);
            field->setText(QString::fromStdString(place));
            if (tests)
                click(KorControls::find(&dialog, KorDSMDialogSources::kFirstTest + kUser));
            auto* said = KorControls::find<QLabel>(&dialog, KorDSMDialogSources::kOutcome);
            EXPECT_EQ(said->text().contains("can be read and changed"), tests) << said->text().toStdString();
            click(KorControls::find(&dialog, 1));
            isDone = true;
        });
        const KorTreeHandle user = select({"User"});
        chooseInMenu("Databases…");
        Q_EMIT tree().contextMenuRequested(user, m_dialog->pos());
        waitFor([&] { return isDone; });
    }
    static void givePassword(const char* password) {
        whenShown<KorDSMDialogPassword>([=](KorDSMDialogPassword& dialog) {
            auto* field = KorControls::find<QLineEdit>(&dialog, KorDSMDialogPassword::kPassword);
            EXPECT_EQ(field->echoMode(), QLineEdit::Password);
            QTest::keyClicks(field, password);
            if (password != std::string(kPassword))
                givePassword(kPassword);
            click(KorControls::find(&dialog, 1));
        });
    }
    bool isOnServer() { return m_databases->source(SourceId::user())->store().isOnServer(); }

    static constexpr const char* kPassword = "se'c}r";
    DatabaseServer& m_server = DatabaseServer::instance();
    std::string m_schema = m_server.newSchema();
    LineProxy m_line{m_server.socket()};
    StyleDatabases m_others; ///< of another editor
};

} // namespace

TEST_F(ServerWindow, WhoseNewRecordGetsAnotherNameAndKeyStaysAtIt) {
    open();
    select({"User", "Hallberg: railings"});
    answerNext([](QWidget* modal) { typeName(modal, "Clash", 2304); });
    command(kNew);
    const std::int32_t key = KorDSMSectionTree::itemOf(tree().selectedItem())->recordKey();
    StructDetailStyle style;
    style.name = "Clash";
    EXPECT_EQ(m_others.append(kTableDetailStyle, style), WriteResult::kWritten);
    ASSERT_EQ(style.key, key);
    StructDetailMaster master;
    master.name = style.name;
    master.styleKey = key;
    master.number = 99;
    master.categoryKey =
        m_others.here()->table(kTableBaseCategory).find(KorString("Hallberg: posts and beams"))->key;
    EXPECT_EQ(m_others.append(kTableDetailMaster, master), WriteResult::kWritten);
    bool isAsked = false;
    whenShown<KorDSMDialogConflicts>([&](KorDSMDialogConflicts& dialog) {
        isAsked = true;
        click(KorControls::find(&dialog, 1));
    });
    for (const eTableType table : {kTableDetailStyle, kTableDetailMaster})
        EXPECT_TRUE(m_others.keepTable(table));
    waitFor([&] { return isAsked && !KorDSMBusy::isBusy(); });
    EXPECT_EQ(selected(), "Clash 1");
    EXPECT_NE(KorDSMSectionTree::itemOf(tree().selectedItem())->recordKey(), key);
}

TEST_F(ServerWindow, WhatOthersStoreIsShownAndTakesNothingAway) {
    open();
    KorTreeHandle entry = select(kStyle);
    const KorOdbcKey style = styleNamed(kStyle.back());
    auto* name = page()->findChild<KorLineEdit*>();
    ASSERT_NE(name, nullptr);
    name->setFocus();
    name->end(false);
    QTest::keyClicks(name, " and more");
    const QString typed = name->text();
    others(style, 3, KorString("theirs"));
    waitFor([&] { return shown(style).description == KorString("theirs"); });
    EXPECT_EQ(tree().selectedItem(), entry);
    EXPECT_EQ(name->text(), typed);
    EXPECT_TRUE(name->isEdited() && name->hasFocus());
    EXPECT_FALSE(isPending()) << "what is being typed was not stored";
    others(style, 1, KorString("Renamed there"));
    waitFor([&] { return selected() == "Renamed there"; });
    EXPECT_EQ(name->text(), typed);
    name->restore();
    EXPECT_EQ(name->text(), "Renamed there");

    select({"User", "Hallberg: posts and beams", "Renamed there", "HB front"});
    const auto combos = page()->findChildren<VELComboTree*>();
    const auto open = std::ranges::find_if(
        combos, [](const VELComboTree* each) { return each->isVisible() && each->isEnabled(); });
    ASSERT_NE(open, combos.end());
    (*open)->showPopup();
    auto* servers = control<QLabel>(1217);
    others(style, 3, KorString("later"));
    waitFor([&] { return servers->isVisible() && servers->text().contains("until you leave"); });
    EXPECT_NE(shown(style).description, KorString("later")) << "a list that is open stays as it is";
    (*open)->hidePopup();
    waitFor([&] { return shown(style).description == KorString("later"); });
    EXPECT_FALSE(servers->text().contains("until you leave"));
    auto* filter = control<QLineEdit>(1210);
    filter->setText("Renamed");
    run("UPDATE detail_style SET description = 'by nobody'; UPDATE dsdb_state SET last_change = last_change "
        "+ 1");
    waitFor([&] { return shown(style).description == KorString("by nobody"); });
    EXPECT_EQ(filter->text(), "Renamed") << "where everything is loaded anew";
}

// More rows than are followed one by one, and none of them in the log any more: everything is read again.
TEST_F(ServerWindow, AFloodOfChangesTurnsTheLoopAndLeavesTheUserWhereHeIs) {
    open().resize(1280, 420);
    select(kView);
    select(kStyle);
    const auto isOpen = [&] { return tree().isExpanded(tree().selectedItem()); };
    ASSERT_TRUE(isOpen());
    auto* name = page()->findChild<KorLineEdit*>();
    name->setFocus();
    name->end(false);
    QTest::keyClicks(name, " and more");
    const QString typed = name->text();
    QScrollBar* bar = tree().verticalScrollBar();
    bar->setValue(bar->maximum());
    const auto top = [&] { return tree().visualRect(tree().currentIndex()).top(); };
    const int topBefore = top();
    const auto lines = [&] {
        return m_databases->source(SourceId::user())->table(kTableLinetypes).rows().size();
    };
    const int linesBefore = lines();
    int turns = 0;
    QTimer turning;
    QObject::connect(&turning, &QTimer::timeout, [&] { turns += KorDSMLockWait::isWaiting(); });
    turning.start(0);
    m_line.setDelay(std::chrono::milliseconds(3));
    StructLinetypes line;
    for (int i = 0; i < 250; ++i) {
        line.key = 0;
        line.name = KorString::format("line %s", {KorString::number(std::int64_t{i})});
        EXPECT_EQ(m_others.append(kTableLinetypes, line), WriteResult::kWritten);
    }
    EXPECT_TRUE(m_others.keepTable(kTableLinetypes));
    run("DELETE FROM dsdb_change");
    waitFor([&] { return lines() == linesBefore + 250; });
    turning.stop();
    EXPECT_GT(turns, 0) << "while it was read";
    EXPECT_EQ(selected(), kStyle.back());
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(top(), topBefore);
    EXPECT_EQ(name->text(), typed);
    EXPECT_TRUE(name->isEdited() && name->hasFocus());
    EXPECT_FALSE(isPending());
}

TEST_F(ServerWindow, TheFieldThatIsClickedKeepsTheFocusWhetherAllIsReadAgainOrNothingCanBe) {
    open();
    select(kStyle);
    auto* name = page()->findChild<KorLineEdit*>();
    const QString before = name->text();
    QString told;
    for (const bool isReadable : {true, false}) {
        QTest::mousePress(name, Qt::LeftButton);
        others(styleNamed(kStyle.back()), 3, KorString(isReadable ? "theirs" : "theirs, too"));
        run("DELETE FROM dsdb_change");
        waitFor([] { return KorDSMCommit::isNoticed(); });
        if (!isReadable) {
            m_line.strikeAt(1, LineProxy::eTrouble::kCutBefore, true);
            whenShown<QMessageBox>([&](QMessageBox& box) {
                told = box.informativeText();
                box.close();
            });
        }
        comeBack();
        EXPECT_EQ(told.isEmpty(), isReadable);
        EXPECT_EQ(m_dialog->focusWidget(), name);
        QTest::mouseRelease(name, Qt::LeftButton);
        name->selectAll();
        QTest::keyClicks(m_dialog->focusWidget(), "mine");
        EXPECT_EQ(name->text(), "mine");
        name->restore();
        EXPECT_EQ(name->text(), before);
    }
}

TEST_F(ServerWindow, WhereAServerAnswersWithoutItsStylesOneBoxSaysSo) {
    m_databases->addSource(SourceId::standard(),
                           connect(DatabaseServer::connectionBy(m_line.folder(), m_schema)));
    EXPECT_EQ(m_databases->source(SourceId::standard())->readAll().error, "");
    open();
    select(kStyle);
    changePosition();
    run("ALTER SCHEMA " + m_schema + " RENAME TO away");
    QStringList told;
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, [&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            told << box->text() + box->informativeText();
            box->close();
        }
    });
    user.start(0);
    click(button(kApply));
    auto* servers = control<QLabel>(1217);
    waitFor([&] { return servers->accessibleName().contains("Cannot be read since"); });
    comeBack();
    ASSERT_EQ(told.size(), 1) << told.join('\n').toStdString();
    EXPECT_EQ(told[0].count("is missing"), 2) << told[0].toStdString();
    run("ALTER SCHEMA away RENAME TO " + m_schema);
    waitFor([&] { return !servers->isVisible() || !servers->accessibleName().contains("since"); });
    click(button(kApply));
    EXPECT_FALSE(isPending());
    EXPECT_EQ(told.size(), 1);
}

TEST_F(ServerWindow, TellsWhoIsThereAndWhoChangesTheRecordThatIsShown) {
    open();
    select(kStyle);
    auto* servers = control<QLabel>(1217);
    const auto says = [&](const char* text) {
        const auto labels = page()->findChildren<QLabel*>();
        return std::ranges::any_of(
            labels, [&](const QLabel* label) { return label->isVisible() && label->text().contains(text); });
    };
    waitFor([&] {
        m_others.glance();
        return servers->isVisible() && servers->text().contains(DatabaseServer::kUser);
    });
    EXPECT_FALSE(says("Being changed by"));
    m_others.setCell(kTableDetailStyle, styleNamed(kStyle.back()), 3, KorString("not stored yet"));
    waitFor([&] {
        m_others.glance();
        return says("Being changed by office");
    });
    m_dialog->resize(683, 700); // half of a usual screen
    QApplication::processEvents();
    for (const QLabel* label : m_dialog->findChildren<QLabel*>())
        if (label->isVisible() &&
            (label->parent() == servers->parent() || label->text().startsWith("Being"))) {
            EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()), label->width());
            EXPECT_EQ(label->visibleRegion().boundingRect(), label->rect()) << label->text().toStdString();
        }
    EXPECT_EQ(servers->toolTip(), "Also here: office (User)");
    m_dialog->resize(1280, 700);
    m_line.strikeAt(1, LineProxy::eTrouble::kCutBefore, true);
    waitFor([&] { return servers->text().contains("No answer since"); });
    EXPECT_FALSE(says("Being changed by"));
    m_line.mend();
    waitFor([&] { return says("Being changed by office") && servers->text().contains("Also here"); });
    m_others.closeSource(SourceId::user());
    waitFor([&] { return !servers->isVisible(); });
    EXPECT_FALSE(says("Being changed by"));
}

TEST_F(ServerWindow, WhoeverMayOnlyReadIsToldWhereItStandsAndRefusedAsWithAFile) {
    run("CREATE ROLE carl LOGIN IN ROLE \"" + m_schema + "_reader\"");
    std::ofstream(path("sources.ini")) << "[user]\nconnection = " << m_server.connection(m_schema, "carl");
    DataFolder folder(m_folder.path() / m_data);
    folder.open();
    EXPECT_TRUE(folder.problems().empty()) << folder.problems().front().view();
    open();
    select(kStyle);
    int places = 0;
    for (const QWidget* each : m_dialog->findChildren<QWidget*>())
        places += each->isVisible() && each->toolTip().contains("role of an editor");
    EXPECT_EQ(places, 3) << "the status line, the head of the page, and what is off because of it";
    for (const int id : {1029, 1033, 1034}) {
        QString said;
        readNextMessage(said);
        command(id);
        EXPECT_EQ(said, "\"User\" can be read, not changed") << id;
    }
    EXPECT_FALSE(isPending());
}

// However long a server is silent the loop of events turns.
TEST_F(ServerWindow, ASilentServerHoldsUpNeitherLookingNorGivingUpAnApply) {
    open();
    select(kStyle);
    int turns = 0;
    QTimer turning;
    QObject::connect(&turning, &QTimer::timeout, [&] { ++turns; });
    turning.start(0);
    auto* servers = control<QLabel>(1217);
    m_line.strikeAt(1, LineProxy::eTrouble::kFreezeBefore, false);
    waitFor([&] { return servers->isVisible() && servers->text().contains("No answer since"); });
    select(kView);
    EXPECT_NE(page(), nullptr) << "what was read is shown";
    select(kStyle);
    changePosition();
    EXPECT_TRUE(isPending());

    QString told;
    bool wasAsked = false;
    turns = 0;
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, [&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            told += box->text() + box->informativeText();
            box->close();
        } else if (auto* giveUp = control<QPushButton>(1216); giveUp && giveUp->isVisible()) {
            wasAsked = true;
            EXPECT_NE(QApplication::overrideCursor(), nullptr);
            page()->findChild<KorLineEdit*>()->setFocus(Qt::MouseFocusReason); // as by a click
            QTest::keyClick(m_dialog.get(), Qt::Key_Escape);
        }
    });
    user.start(0);
    click(button(kApply));
    user.stop();
    EXPECT_TRUE(wasAsked);
    EXPECT_GT(turns, 2);
    EXPECT_EQ(told.count("\""), 2) << "one sentence about the database: " << told.toStdString();
    EXPECT_TRUE(told.contains("gave no answer")) << told.toStdString();
    EXPECT_EQ(m_dialog->focusWidget(), button(kApply)) << "no caret where nothing can be typed";
    QApplication::processEvents();
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_TRUE(isPending()) << "nothing was stored";

    m_line.mend();
    waitFor([&] { return !servers->text().contains("No answer since") || !servers->isVisible(); });
    EXPECT_TRUE(isPending());
    click(button(kApply));
    EXPECT_FALSE(isPending());
}

TEST_F(ServerWindow, ADatabaseMovesToAServerWithAPasswordAndBackWhileTheWindowIsOpen) {
    run("CREATE ROLE guarded LOGIN PASSWORD 'se''c}r' IN ROLE \"" + m_schema + "_editor\"");
    m_databases->closeSource(SourceId::user());
    EXPECT_EQ(m_databases->openFile(SourceId::user(), path("user.dsdb"), false).error, "");
    open();
    const KorOdbcKey style = styleNamed(kStyle.back());
    others(style, 3, KorString("on the server"));
    givePassword("wrong");
    move(m_server.connection(m_schema, DatabaseServer::kGuarded), true);
    ASSERT_TRUE(isOnServer()) << "at once, and without a second question";
    EXPECT_EQ(shown(style).description, KorString("on the server"));
    EXPECT_EQ(selected(), "User");
    select(kStyle);
    changePosition();
    QString said;
    whenShown<QMessageBox>([&said](QMessageBox& box) {
        said = box.informativeText();
        box.close();
    });
    move({}, false);
    EXPECT_TRUE(said.contains("not stored yet")) << said.toStdString();
    EXPECT_TRUE(isPending() && isOnServer());
    click(button(kApply));
    EXPECT_FALSE(isPending() || isOnServer());
    EXPECT_EQ(shown(style).titlePosition, 3);
    m_others.refreshChanged();
    const auto* there = m_others.here()->table(kTableDetailStyle).find(style);
    EXPECT_EQ(static_cast<const StructDetailStyle*>(there)->titlePosition, 4)
        << "what was applied went where it had been read";
}
