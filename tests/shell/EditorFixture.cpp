#include "shell/EditorFixture.h"
#include "data/StyleDatabases.h"

#include "base/KorAssert.h"
#include "controls/KorLayoutStore.h"
#include "controls/KorMnemonics.h"
#include "data/text/SampleData.h"
#include "session/DataFolder.h"
#include "shell/ModuleResources.h"

#include <QMenu>
#include <QTabBar>
#include <sqlite3.h>

EditorFixture::EditorFixture() {
    KorAssert::setSink([this](const char* expression, const char* file, int line) {
        m_failedChecks.push_back(std::string(expression) + " " + file + ":" + std::to_string(line));
    });
    ModuleResources::setUp({});
    KorLayoutStore::write("PreviewShown", "0");
    const Result<> built = buildSampleData(SOURCE_DIR "/resources", m_folder.file("data"));
    EXPECT_TRUE(built) << built.error;
}

EditorFixture::~EditorFixture() {
    close();
    KorDSMDialogFactory::getDSMDataStructure().emptyDataStructure();
    m_databases.reset();
    KorAssert::setSink({});
    EXPECT_TRUE(m_failedChecks.empty()) << m_failedChecks.front();
}

KorDSMMainDialog& EditorFixture::open() {
    close();
    if (!m_databases) {
        m_databases = std::make_unique<StyleDatabases>();
        DataFolder folder(m_folder.path() / m_data);
        folder.open();
        for (const KorString& problem : folder.problems())
            ADD_FAILURE() << problem.view();
    }
    KorDSMSectionLoader().loadDataStructure(KorDSMDialogFactory::getDSMDataStructure());
    m_dialog = std::make_unique<KorDSMMainDialog>(nullptr);
    m_dialog->OnInitDialog();
    QObject::connect(m_dialog.get(), &QDialog::finished, [this](int result) { m_result = result; });
    m_dialog->resize(1280, 760);
    m_dialog->show();
    QApplication::processEvents();
    return *m_dialog;
}

void EditorFixture::close() {
    if (m_dialog && m_dialog->isVisible())
        m_dialog->reject();
    m_dialog.reset();
}

std::vector<std::string> EditorFixture::inView(const char* text) {
    const QAbstractItemModel& model = *tree().model();
    std::vector<std::string> texts;
    const QModelIndexList found = model.match(model.index(0, 0), Qt::DisplayRole, QString::fromUtf8(text), 1,
                                              Qt::MatchExactly | Qt::MatchRecursive);
    for (int row = 0; !found.isEmpty() && row < model.rowCount(found.first()); ++row)
        texts.push_back(model.index(row, 0, found.first()).data().toString().toStdString());
    return texts;
}

KorTreeHandle EditorFixture::child(KorTreeHandle parent, const char* text) {
    tree().expand(parent);
    KorTreeHandle entry = tree().getChildItem(parent);
    while (entry && !(tree().getItemText(entry) == KorString(text)))
        entry = tree().getNextSiblingItem(entry);
    EXPECT_NE(entry, nullptr) << "no entry " << text;
    return entry;
}

KorTreeHandle EditorFixture::select(const Path& path) {
    KorTreeHandle entry = tree().getRoot();
    for (const char* text : path)
        if (!(entry = child(entry, text)))
            return nullptr;
    tree().selectItem(entry);
    QApplication::processEvents();
    return entry;
}

void EditorFixture::showTab(int index) {
    auto* bar = control<KorTabCtrl>(1002)->findChild<QTabBar*>();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(index).center());
    QApplication::processEvents();
}

void EditorFixture::click(QWidget* widget) {
    ASSERT_NE(widget, nullptr);
    // A stretched radio button or check box hears clicks at its left end only.
    QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(8, widget->height() / 2));
}

std::string EditorFixture::selected() {
    const KorTreeHandle entry = tree().selectedItem();
    return entry ? tree().getItemText(entry).toStdString() : "";
}

void EditorFixture::changePosition() {
    select(kStyle);
    showTab(1);
    click(pageControl<QRadioButton>(kBelowDetail));
}

void EditorFixture::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    m_dialog->activateWindow();
    QTest::keyClick(m_dialog.get(), key, modifiers);
}

void EditorFixture::comeBack() {
    QEvent activation(QEvent::WindowActivate);
    QApplication::sendEvent(m_dialog.get(), &activation);
    QApplication::processEvents();
}

void EditorFixture::chooseInMenu(const char* command) {
    QTimer::singleShot(0, m_dialog.get(), [command] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        menu->close();
        for (QAction* action : menu->actions())
            if (KorMnemonics::plain(action->text()).section(u'\t', 0, 0) == command && action->isEnabled())
                return action->trigger();
        ADD_FAILURE() << "no command " << command;
    });
}

void EditorFixture::answerNext(std::function<void(QWidget*)> answer) {
    QTimer::singleShot(0, m_dialog.get(), [answer = std::move(answer)] {
        QWidget* modal = QApplication::activeModalWidget();
        ASSERT_NE(modal, nullptr);
        answer(modal);
    });
}

void EditorFixture::answerYes() {
    answerNext([](QWidget* modal) {
        auto* box = qobject_cast<QMessageBox*>(modal);
        ASSERT_NE(box, nullptr);
        QTest::mouseClick(box->button(QMessageBox::Yes), Qt::LeftButton);
    });
}

void EditorFixture::typeName(QWidget* modal, const char* name, int field) {
    auto* edit = KorControls::find<QLineEdit>(modal, field);
    ASSERT_NE(edit, nullptr);
    edit->selectAll();
    QTest::keyClicks(edit, name);
    QTest::mouseClick(KorControls::find<QPushButton>(modal, 1), Qt::LeftButton);
}

void EditorFixture::nameFile(QWidget* dialog, const std::string& file) {
    auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    ASSERT_NE(name, nullptr);
    name->setText(QString::fromStdString(file));
    QMetaObject::invokeMethod(dialog, "accept");
}

void EditorFixture::importFile(const std::string& file, std::function<void(KorDSMDialogImport&)> answer) {
    answerNext([&file](QWidget* dialog) { nameFile(dialog, file); });
    whenShown<KorDSMDialogImport>(std::move(answer));
    command(kImport);
}

void EditorFixture::readNextMessage(QString& said) {
    whenShown<QMessageBox>([&said](QMessageBox& box) {
        said = box.text();
        QTest::keyClick(&box, Qt::Key_Escape);
    });
}

std::string EditorFixture::stored(const char* file, const std::string& sql) {
    sqlite3* database = nullptr;
    sqlite3_stmt* statement = nullptr;
    std::string text;
    sqlite3_open_v2(path(file).c_str(), &database, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr);
    if (sqlite3_step(statement) == SQLITE_ROW)
        text = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
    sqlite3_finalize(statement);
    sqlite3_close(database);
    return text;
}
