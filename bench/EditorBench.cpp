#include "Growth.h"
#include "OpenEditor.h"

#include "controls/KorButtonGroup.h"
#include "controls/KorControls.h"
#include "controls/KorMFCGridCtrl.h"
#include "controls/KorStyle.h"
#include "controls/KorTabCtrl.h"
#include "controls/KorTabPage.h"
#include "data/StyleDatabases.h"
#include "model/KorDSMDialogFactory.h"
#include "model/KorDSMMessages.h"
#include "services/KOSettings.h"
#include "services/KorResources.h"
#include "session/KorDSMGuardedWrite.h"
#include "session/KorDSMPartList.h"
#include "session/KorDSMReadAhead.h"
#include "session/KorDSMSearch.h"
#include "shell/KorDSMMainDialog.h"
#include "shell/KorDSMSectionTree.h"
#include "shell/ModuleResources.h"
#include "templates/Templates.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <sqlite3.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

// The forms of the pages that have one, in the tabs of an otherwise empty dialog.
void referenceDialog(QDialog& dialog) {
    auto* layout = new QVBoxLayout(&dialog);
    auto* tabs = new QTabWidget(&dialog);
    layout->addWidget(tabs);
    for (const int number : {2001, 2002, 2309, 2003, 2004, 2005, 1086, 2020, 2006, 2007, 2009,
                             2010, 2015, 2014, 2321, 2008, 2011, 2012, 2013, 2017, 2016}) {
        auto* form = new QWidget;
        Templates::setUp(number, form);
        tabs->addTab(form, QString::number(number));
    }
}

void referenceOpen(benchmark::State& state) {
    for (auto run : state) {
        state.PauseTiming();
        auto databases = openDatabases();
        state.ResumeTiming();
        load();
        auto dialog = std::make_unique<QDialog>();
        referenceDialog(*dialog);
        paint(*dialog);
        state.PauseTiming();
        dialog.reset();
        state.ResumeTiming();
    }
}

void openEditor(benchmark::State& state) {
    for (auto run : state) {
        state.PauseTiming();
        auto databases = openDatabases();
        state.ResumeTiming();
        load();
        auto dialog = std::make_unique<KorDSMMainDialog>(nullptr);
        dialog->OnInitDialog();
        paint(*dialog);
        state.PauseTiming();
        dialog.reset();
        state.ResumeTiming();
    }
}

// The longest that a key has to wait for a piece of what is read ahead.
void readAhead(benchmark::State& state) {
    double slowest = 0;
    for (auto run : state) {
        state.PauseTiming();
        auto databases = openDatabases();
        load();
        state.ResumeTiming();
        for (bool isMore = true; isMore;) {
            const Stopwatch watch;
            isMore = KorDSMReadAhead::step();
            slowest = std::max(slowest, watch.seconds());
        }
        state.PauseTiming();
        structure().emptyDataStructure();
        state.ResumeTiming();
    }
    state.counters["slowest_ms"] = slowest * 1000;
}

void selectItem(benchmark::State& state) {
    OpenEditor editor;
    editor.tree().expand(editor.category);
    KorTreeHandle first = editor.tree().getChildItem(editor.category);
    KorTreeHandle entry = first;
    editor.tree().selectItem(first);
    CountingStore::reads = 0;
    for (auto run : state) {
        entry = editor.tree().getNextSiblingItem(entry) ? editor.tree().getNextSiblingItem(entry) : first;
        editor.tree().selectItem(entry);
        QApplication::processEvents();
    }
    state.counters["reads"] = CountingStore::reads;
}

// The first look at a view: its page offers all other views, below their categories.
void firstLists(benchmark::State& state) {
    for (auto run : state) {
        state.PauseTiming();
        auto editor = std::make_unique<OpenEditor>();
        KorTreeCtrl& tree = editor->tree();
        tree.expand(editor->category);
        const KorTreeHandle style = tree.getChildItem(editor->category);
        tree.selectItem(style);
        tree.expand(style);
        QApplication::processEvents();
        state.ResumeTiming();
        tree.selectItem(tree.getChildItem(style));
        QApplication::processEvents();
        state.PauseTiming();
        editor.reset();
        state.ResumeTiming();
    }
}

void openTenThousand(benchmark::State& state) {
    const std::string file = fs::temp_directory_path() / "detailstyles-bench-one-category.dsdb";
    static_cast<void>(GeneratedStandard::write(file, 1));
    for (auto run : state) {
        state.PauseTiming();
        auto editor = std::make_unique<OpenEditor>(file);
        state.ResumeTiming();
        editor->tree().expand(editor->category);
        QApplication::processEvents();
        state.PauseTiming();
        if (editor->tree().childCount(editor->category) != GeneratedStandard::styles())
            state.SkipWithError("the entry did not open");
        editor.reset();
        state.ResumeTiming();
    }
    fs::remove(file);
}

// The editor is opened on so many categories, and the entry that holds them.
void openCategories(benchmark::State& state) {
    reportGrowth(state, [&state](int count) {
        const std::string file = fs::temp_directory_path() / "detailstyles-bench-categories.dsdb";
        static_cast<void>(GeneratedStandard::writeCategories(file, count));
        const Stopwatch watch;
        OpenEditor editor(file);
        QApplication::processEvents();
        const double seconds = watch.seconds();
        if (editor.tree().childCount(editor.tree().getParentItem(editor.category)) != count)
            state.SkipWithError("not every category is shown");
        fs::remove(file);
        return seconds;
    });
}

void filterKey(benchmark::State& state) {
    OpenEditor editor;
    auto* filter = KorControls::find<QLineEdit>(editor.dialog.get(), 1210);
    const QString words = QStringLiteral("view request of the works 12");
    int length = 0;
    filter->setText(words.left(1));
    for (auto run : state) {
        length = length % static_cast<int>(words.size()) + 1;
        filter->setText(words.left(length));
        QApplication::processEvents();
    }
}

// The yardstick of a search: every name is read once.
void referenceNames(benchmark::State& state) {
    auto databases = openDatabases();
    StyleSource& source = *databases->source(SourceId::standard());
    static_cast<void>(source.readAll());
    for (auto run : state) {
        std::size_t found = 0;
        for (const TableSchema& table : allTables())
            for (int i = 0; i < source.table(table.type).rows().size(); ++i)
                found += source.table(table.type).rows().at(i).name.lowered().view().find("works 12") !=
                         std::string_view::npos;
        benchmark::DoNotOptimize(found);
    }
}

// Opening the search, what it collects while nobody types, and the hits of a key in it.
void openSearch(benchmark::State& state) {
    OpenEditor editor;
    for (auto run : state)
        KorDSMSearch search({SourceId::standard(), {}}, {});
}

void collectAhead(benchmark::State& state) {
    OpenEditor editor;
    double slowest = 0;
    for (auto run : state) {
        state.PauseTiming();
        KorDSMSearch search({SourceId::standard(), {}}, {});
        state.ResumeTiming();
        for (bool isMore = true; isMore;) {
            const Stopwatch watch;
            isMore = search.collectAhead();
            slowest = std::max(slowest, watch.seconds());
        }
    }
    state.counters["slowest_ms"] = slowest * 1000;
}

void searchKey(benchmark::State& state) {
    OpenEditor editor;
    KorDSMSearch search({SourceId::standard(), {}}, {});
    while (search.collectAhead())
        ;
    const std::string words = "view request of the works 12";
    std::size_t length = 0;
    double slowest = 0;
    for (auto run : state) {
        length = length % words.size() + 1;
        const Stopwatch watch;
        if (search.find(KorString(words.substr(0, length)), 50).hits.empty())
            state.SkipWithError("nothing was found");
        slowest = std::max(slowest, watch.seconds());
    }
    state.counters["slowest_ms"] = slowest * 1000;
}

void referenceUpdate(benchmark::State& state) {
    const fs::path file = fs::temp_directory_path() / "detailstyles-bench-update.dsdb";
    fs::copy_file(GeneratedStandard::file(), file, fs::copy_options::overwrite_existing);
    sqlite3* database = nullptr;
    sqlite3_open_v2(file.c_str(), &database, SQLITE_OPEN_READWRITE, nullptr);
    sqlite3_exec(database, "PRAGMA synchronous=EXTRA", nullptr, nullptr, nullptr);
    int value = 0;
    for (auto run : state) {
        const std::string sql = "UPDATE view_request SET scale=" + std::to_string(++value) + " WHERE key=1";
        sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr);
    }
    sqlite3_close(database);
    fs::remove(file);
}

// A click in the open page of a view request that a hundred other entries show too.
void guardedWriteWithTwins(benchmark::State& state) {
    WritableEditor editor;
    KorDSMGuardedWrite::addAskFunction(&state, [](eTableType, const KorOdbcKey&) { return 1; });
    KorTreeCtrl& tree = *editor.dialog->currentTree().control();
    tree.expand(tree.selectedItem());
    tree.selectItem(tree.getChildItem(tree.selectedItem()));
    KorDSMDatabaseItem& view = *KorDSMSectionTree::itemOf(tree.selectedItem());
    std::vector<std::unique_ptr<KorDSMDatabaseItem>> twins;
    for (int i = 0; i < 100; ++i) {
        twins.emplace_back(view.clone());
        view.linkEqualItem(*twins.back());
    }
    auto* tabs = KorControls::find<KorTabCtrl>(editor.dialog.get(), 1002);
    tabs->findChild<QTabBar*>()->setCurrentIndex(1);
    auto* usedForCuts = KorControls::find<QCheckBox>(tabs->currentPage(), 1250);
    QApplication::processEvents();
    for (auto run : state) {
        usedForCuts->click();
        QApplication::processEvents();
    }
    if (editor.databases->pending().steps().size() != static_cast<std::size_t>(state.iterations()))
        state.SkipWithError("not every click was written once");
    twins.clear();
    KorDSMGuardedWrite::removeAskFunction(&state);
}

// Presses OK in the next modal dialog, once it is shown.
void acceptNext() {
    QTimer::singleShot(0, [] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
            box->button(QMessageBox::Yes)->click();
        else if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
            dialog->accept();
    });
}

// The yardstick of both: an empty dialog with a field, and a message box, each shown and accepted.
void referenceQuestions(benchmark::State& state) {
    WritableEditor editor;
    for (auto run : state) {
        QDialog named(editor.dialog.get());
        auto* layout = new QVBoxLayout(&named);
        layout->addWidget(new QLabel("Name", &named));
        layout->addWidget(new QLineEdit("A style", &named));
        layout->addWidget(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &named));
        acceptNext();
        named.exec();
        acceptNext();
        QMessageBox::question(editor.dialog.get(), "Delete", "Delete \"A style\"?",
                              QMessageBox::Yes | QMessageBox::No);
        QApplication::processEvents();
    }
}

// Through the strip's buttons, with the dialogs that ask for the name and for consent. The first pair reads
// what of the database was not read yet, once, and is told apart.
void copyAndDelete(benchmark::State& state) {
    WritableEditor editor;
    constexpr int kCopy = 1033;
    constexpr int kDelete = 1035;
    auto* strip = KorControls::find<KorButtonGroup>(editor.dialog.get(), 1011);
    KorTreeCtrl& tree = *editor.dialog->currentTree().control();
    const KorTreeHandle category = tree.getParentItem(tree.selectedItem());
    const auto pair = [&] {
        const int before = tree.childCount(category);
        for (const int command : {kCopy, kDelete}) {
            acceptNext();
            strip->button(command)->click();
            QApplication::processEvents();
            if (tree.childCount(category) != before + (command == kCopy))
                state.SkipWithError("the style was not copied or not deleted");
        }
    };
    const Stopwatch watch;
    pair();
    state.counters["first_s"] = watch.seconds();
    for (auto run : state)
        pair();
}

// A map with so many entries in the writable editor, and the way to it.
struct LongList {
    explicit LongList(std::size_t count) {
        const RowArray& maps = editor.databases->source(SourceId::user())->table(kTableReprMap).rows();
        place.source = SourceId::user();
        place.row = {kTableReprMap, maps.at(0).key};
        editor.databases->setCurrentSource(SourceId::user());
        KorDSMPartList list(place.source, place.row, kTableReprMapEntry);
        KorDSMGuardedWrite::addAskFunction(
            this, [](eTableType, const KorOdbcKey&) { return int(KorDSMGuardedWrite::kWrite); });
        while (list.keys().size() < count) {
            const auto keys = list.keys();
            const auto more = std::min(keys.size(), count - keys.size());
            static_cast<void>(list.duplicate({keys.begin(), keys.begin() + static_cast<long>(more)}));
        }
    }
    ~LongList() { KorDSMGuardedWrite::removeAskFunction(this); }

    void open() {
        KorDSMMainWindow::sendMessage(place);
        QApplication::processEvents();
    }
    void leave() {
        editor.dialog->currentTree().control()->selectItem(editor.style->entry());
        QApplication::processEvents();
    }
    KorMFCGridCtrl* grid() {
        auto* tabs = KorControls::find<KorTabCtrl>(editor.dialog.get(), 1002);
        return tabs->currentPage() ? tabs->currentPage()->findChild<KorMFCGridCtrl*>() : nullptr;
    }

    WritableEditor editor;
    DsmGoToRecord place;
};

void openList(benchmark::State& state) {
    LongList list(static_cast<std::size_t>(state.range(0)));
    for (auto run : state) {
        state.PauseTiming();
        list.leave();
        state.ResumeTiming();
        list.open();
        if (!list.grid() || list.grid()->rowCount() != state.range(0))
            state.SkipWithError("the list did not open");
    }
}

// The row in the middle, up and down by keys.
void moveInList(benchmark::State& state) {
    LongList list(static_cast<std::size_t>(state.range(0)));
    list.open();
    list.grid()->selectRows({static_cast<int>(state.range(0)) / 2});
    bool isDown = false;
    for (auto run : state) {
        const std::vector<int> before = list.grid()->selectedRows();
        isDown = !isDown;
        QKeyEvent press(QEvent::KeyPress, isDown ? Qt::Key_Down : Qt::Key_Up, Qt::AltModifier);
        QApplication::sendEvent(list.grid(), &press);
        QApplication::processEvents();
        if (list.grid()->selectedRows() == before)
            state.SkipWithError("the row did not move");
    }
}

double residentMegabytes() {
    std::ifstream statm("/proc/self/statm");
    long pages = 0;
    long resident = 0;
    statm >> pages >> resident;
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

// Resident memory, with all tables read, above a process that shows the empty dialog with the page forms.
void reportMemory() {
    {
        QDialog dialog;
        referenceDialog(dialog);
        paint(dialog);
    }
    const double fileSize = static_cast<double>(fs::file_size(GeneratedStandard::file())) / 1e6;
    const double before = residentMegabytes();

    const OpenEditor editor;
    const double used = residentMegabytes() - before;
    std::cout << "memory: file " << fileSize << " MB, editor above an empty Qt program " << used
              << " MB, ratio " << used / fileSize << '\n';
}

} // namespace

BENCHMARK(referenceOpen)->Unit(benchmark::kMillisecond)->MinTime(3);
BENCHMARK(openEditor)->Unit(benchmark::kMillisecond)->MinTime(3);
BENCHMARK(readAhead)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(selectItem)->Unit(benchmark::kMillisecond);
BENCHMARK(firstLists)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(filterKey)->Unit(benchmark::kMillisecond);
BENCHMARK(referenceNames)->Unit(benchmark::kMillisecond);
BENCHMARK(openSearch)->Unit(benchmark::kMillisecond);
BENCHMARK(collectAhead)->Unit(benchmark::kMillisecond);
BENCHMARK(searchKey)->Unit(benchmark::kMillisecond);
BENCHMARK(referenceUpdate)->Unit(benchmark::kMillisecond);
BENCHMARK(guardedWriteWithTwins)->Unit(benchmark::kMillisecond);
BENCHMARK(referenceQuestions)->Unit(benchmark::kMillisecond);
BENCHMARK(copyAndDelete)->Unit(benchmark::kMillisecond);
BENCHMARK(openList)->Arg(500)->Unit(benchmark::kMillisecond);
BENCHMARK(moveInList)->Arg(500)->Unit(benchmark::kMillisecond);
BENCHMARK(openTenThousand)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(openCategories)->Arg(2500)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    GeneratedStandard::takeScale(argc, argv);
    QApplication application(argc, argv);
    QApplication::setStyle(new KorStyle);
    KOSettings::getInstance().useFile(fs::temp_directory_path() / "detailstyles-bench-settings.ini");
    ModuleResources::setUp({});
    reportMemory();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
