#include "pages/PageFixture.h"

#include "controls/KorQt.h"
#include "data/text/SampleData.h"
#include "session/KorDSMTwins.h"
#include "shell/ModuleResources.h"

#include <QAbstractItemView>
#include <QLabel>
#include <QRegularExpression>
#include <QVBoxLayout>

namespace fs = std::filesystem;

namespace {

// Built once per run; every test gets copies.
const fs::path& samples() {
    static const TempFolder folder;
    static const Result<> built = buildSampleData(SOURCE_DIR "/resources", folder.path().string());
    EXPECT_EQ(built.error, "");
    return folder.path();
}

std::string text(const CellValue& value) {
    if (const auto* integer = std::get_if<std::int64_t>(&value))
        return std::to_string(*integer);
    if (const auto* real = std::get_if<double>(&value))
        return std::to_string(*real);
    const auto* words = std::get_if<KorString>(&value);
    return words ? '"' + words->toStdString() + '"' : "nothing";
}

std::string text(const PendingStep& step) {
    return "table " + std::to_string(step.table) + " row " + std::to_string(step.key) + " column " +
           std::to_string(step.column ? step.column->number : -1) + ": " + text(step.before) + " -> " +
           text(step.after);
}

} // namespace

PageFixture::PageFixture() {
    KorDSMMainWindow::add(this);
    KorDSMGuardedWrite::addAskFunction(this, [this](eTableType table, const KorOdbcKey& key) {
        m_asked.emplace_back(table, key.getKey());
        return m_answer;
    });
    KOSettings::getInstance().setPathData(samples());
    ModuleResources::setUp({});
    for (const char* name : {"standard.dsdb", "user.dsdb"})
        fs::copy_file(samples() / name, m_folder.path() / name);
    EXPECT_TRUE(databases.openFile(SourceId::standard(), (m_folder.path() / "standard.dsdb").string(), true));
    EXPECT_TRUE(databases.openFile(SourceId::user(), (m_folder.path() / "user.dsdb").string(), false));
    useSource(SourceId::user());
    auto* column = new QVBoxLayout(&m_window);
    column->addWidget(m_tabs = new KorTabCtrl);
    m_window.resize(900, 700);
}

PageFixture::~PageFixture() {
    m_group.reset();
    KorDSMGuardedWrite::removeAskFunction(this);
    KorDSMMainWindow::remove(this);
}

void PageFixture::TearDown() {
    m_tabs->setCurrentContent(nullptr);
    for (const KorString& sentence : KorHostReport::take())
        ADD_FAILURE() << sentence.toStdString();
}

const StructRecord& PageFixture::rowOf(eTableType table, const KorString& name) {
    StyleTable& rows = databases.here()->table(table);
    const StructRecord* found =
        name.isEmpty() && rows.rows().size() > 0 ? &rows.rows().at(0) : rows.find(name);
    if (!found)
        throw std::runtime_error("no such row: " + name.toStdString());
    return *found;
}

void PageFixture::store(eTableType table, std::int32_t key, int column, const CellValue& value) {
    ASSERT_TRUE(databases.here()->setCell(table, KorOdbcKey(key), *findTable(table)->column(column), value));
}

void PageFixture::arrange(KorDSMDatabaseItem& shown, int column, const CellValue& value) {
    store(shown.tableType(), shown.recordKey(), column, value);
    KorDSMTwins::recordWritten(shown);
}

void PageFixture::show(TabContent& group, KorDSMDatabaseItem& shown) {
    group.setPageData(&shown, -1);
    m_tabs->setCurrentContent(&group);
    showActive(m_window);
}

void PageFixture::show(KorDSMDatabaseItem& shown) {
    m_tabs->currentContent()->setPageData(&shown, -1);
    if (!m_tabs->currentPage()->isActive())
        m_tabs->resumeCurrentPage();
}

bool PageFixture::isEnabled(int id) {
    const QWidget& found = control(id);
    const auto* field = qobject_cast<const QLineEdit*>(&found);
    return found.isEnabled() && !(field && field->isReadOnly());
}

std::string PageFixture::textOf(int id) {
    QWidget& found = control(id);
    for (const char* property : {"currentText", "text", "title"})
        if (const QVariant value = found.property(property); value.isValid())
            return value.toString().remove(QRegularExpression("(?<!&)&(?!&)")).toStdString();
    return {};
}

void PageFixture::click(int id) {
    QWidget& target = control(id);
    EXPECT_TRUE(target.isVisible() && target.isEnabled()) << "control " << id;
    const bool indicator = target.inherits("QCheckBox") || target.inherits("QRadioButton");
    QTest::mouseClick(&target, Qt::LeftButton, {},
                      indicator ? QPoint(8, target.height() / 2) : target.rect().center());
}

void PageFixture::keys(QWidget& target, const QString& text) {
    for (const QChar letter : text)
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, 0, Qt::NoModifier, QString(letter));
            QCoreApplication::sendEvent(&target, &event);
        }
}

void PageFixture::type(int id, const QString& text) {
    QWidget& field = control(id);
    EXPECT_TRUE(field.isVisible() && field.isEnabled()) << "control " << id;
    field.setFocus();
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&field, Qt::Key_Delete);
    keys(field, text);
    QTest::keyClick(&field, Qt::Key_Return);
}

void PageFixture::choose(int id, const QString& text) {
    auto& combo = control<QComboBox>(id);
    EXPECT_TRUE(combo.isVisible() && combo.isEnabled()) << "control " << id;
    const int index = combo.findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    EXPECT_GE(index, 0) << text.toStdString();
    combo.setFocus();
    combo.showPopup();
    combo.view()->setCurrentIndex(combo.model()->index(index, combo.modelColumn(), combo.rootModelIndex()));
    QTest::keyClick(combo.view(), Qt::Key_Return);
}

void PageFixture::answerName(const QString& name) {
    QTimer::singleShot(0, qApp, [name] {
        QWidget* dialog = QApplication::activeModalWidget();
        auto* edit = KorControls::find<QLineEdit>(dialog, 1015);
        edit->selectAll();
        keys(*edit, name);
        QTest::mouseClick(KorControls::find(dialog, 1), Qt::LeftButton);
    });
}

testing::AssertionResult PageFixture::wroteOnly(const KorDSMDatabaseItem& item, int column,
                                                const CellValue& value) {
    return wroteOnly(item.tableType(), item.recordKey(), column, value);
}

testing::AssertionResult PageFixture::wroteOnly(eTableType table, std::int32_t key, int column,
                                                const CellValue& value) {
    const auto written = steps();
    if (written.size() == 1 && written[0]->action == PendingStep::eAction::kCell &&
        written[0]->table == table && written[0]->key == key && written[0]->column->number == column &&
        written[0]->after == value)
        return testing::AssertionSuccess();
    testing::AssertionResult result = testing::AssertionFailure() << written.size() << " written";
    for (const PendingStep* step : written)
        result << "\n  " << text(*step);
    return result;
}

testing::AssertionResult PageFixture::wroteNothing() {
    const auto written = steps();
    testing::AssertionResult result =
        written.empty() ? testing::AssertionSuccess() : testing::AssertionFailure();
    for (const PendingStep* step : written)
        result << "\n  " << text(*step);
    return result;
}

void PageFixture::takeBack(KorDSMDatabaseItem& shown) {
    while (databases.pending().canUndo())
        databases.undo();
    KorDSMTwins::recordWritten(shown);
    show(shown);
}
