#include "OpenEditor.h"
#include "ProcessorTime.h"

#include "controls/KorControls.h"
#include "controls/KorLayoutStore.h"
#include "controls/KorListCtrl.h"
#include "controls/KorStyle.h"
#include "controls/KorTabCtrl.h"
#include "controls/KorTabPage.h"
#include "services/KOSettings.h"
#include "session/KorDSMGuardedWrite.h"
#include "shell/ModuleResources.h"
#include "shell/PreviewPane.h"
#include "shell/StyleThumbnails.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <benchmark/benchmark.h>

// What the preview and the thumbnails cost whoever uses the window on the large database. The reference of
// what is done with the pane open is the same with the pane hidden, in the same run.

namespace {

namespace fs = std::filesystem;

/// The window with a style selected, and the pane open or not.
struct Window {
    explicit Window(bool withPane) {
        KorLayoutStore::write("PreviewShown", withPane ? "1" : "0");
        KorLayoutStore::write("PreviewPlace", "beside");
        editor = std::make_unique<WritableEditor>();
        editor->dialog->resize(1800, 1000);
        editor->dialog->activateWindow();
        settle();
        if (withPane != (pane().view().drawing() != nullptr))
            throw std::runtime_error("the pane is not as it should be");
    }

    static void settle() {
        for (int i = 0; i < 4; ++i)
            QApplication::processEvents();
    }
    PreviewPane& pane() { return *editor->dialog->findChild<PreviewPane*>(); }
    QWidget& page() { return *KorControls::find<KorTabCtrl>(editor->dialog.get(), 1002)->currentPage(); }
    template <typename Field>
    std::vector<Field*> fields() {
        std::vector<Field*> shown;
        for (Field* field : page().findChildren<Field*>())
            if (field->isVisible() && field->isEnabled())
                shown.push_back(field);
        return shown;
    }
    static void press(int key, const QString& text = {}) {
        QWidget* focus = QApplication::focusWidget();
        if (!focus)
            throw std::runtime_error("nothing has the focus");
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
        QApplication::sendEvent(focus, &event);
    }

    std::unique_ptr<WritableEditor> editor;
};

// From field to field: with the pane, what each of them governs is marked and painted; also with a filter.
void tab(benchmark::State& state) {
    Window window(state.range(0) != 0);
    if (state.range(1) != 0) {
        const std::string name = window.editor->style->record()->name.toStdString();
        KorControls::find<QLineEdit>(window.editor->dialog.get(), 1210)
            ->setText(QString::fromStdString(name.substr(0, 3)));
        Window::settle();
    }
    std::vector<double> times;
    std::size_t marked = 0;
    for (auto run : state) {
        window.fields<QLineEdit>().front()->setFocus();
        Window::settle();
        for (int i = 0; i < 150; ++i) {
            const double start = now();
            Window::press(Qt::Key_Tab);
            QApplication::processEvents();
            times.push_back(since(start));
            marked += window.pane().view().marked().empty() ? 0 : 1;
            Window::settle();
        }
    }
    if (state.range(0) != 0 && marked == 0)
        state.SkipWithError("nothing was marked");
    report(state, std::move(times));
}

// Letters that are typed: nothing is drawn before a pause.
void type(benchmark::State& state) {
    Window window(state.range(0) != 0);
    std::vector<double> times;
    for (auto run : state) {
        window.fields<QLineEdit>().front()->setFocus();
        Window::settle();
        for (int i = 0; i < 100; ++i) {
            const double start = now();
            Window::press(Qt::Key_X, QStringLiteral("x"));
            QApplication::processEvents();
            times.push_back(since(start));
        }
    }
    report(state, std::move(times));
}

// A check box, to the new picture.
void change(benchmark::State& state) {
    {
        Window window(state.range(0) != 0);
        KorDSMGuardedWrite::addAskFunction(&state, [](eTableType, const KorOdbcKey&) { return 1; });
        std::vector<double> times;
        for (auto run : state) {
            const std::vector<QCheckBox*> boxes = window.fields<QCheckBox>();
            if (boxes.empty())
                throw std::runtime_error("the page has no check box");
            for (int i = 0; i < 60; ++i) {
                const double start = now();
                boxes[static_cast<std::size_t>(i / 2) % boxes.size()]->click();
                Window::settle();
                times.push_back(since(start));
            }
        }
        report(state, std::move(times));
    }
    KorDSMGuardedWrite::removeAskFunction(&state);
}

// A thousand thumbnails of a category of ten thousand styles, page by page; each time is what a key that
// comes meanwhile may have to wait.
void thumbnails(benchmark::State& state) {
    constexpr int kCount = 1000;
    const std::string file = fs::temp_directory_path() / "detailstyles-bench-thumbnails.dsdb";
    static_cast<void>(GeneratedStandard::write(file, 1));
    for (auto run : state) {
        std::vector<double> times;
        {
            KorLayoutStore::write("PreviewShown", "0");
            OpenEditor editor(file);
            auto& list = *KorControls::find<KorListCtrl>(editor.dialog.get(), 1003);
            StyleThumbnails& made = StyleThumbnails::ofSession();
            const int before = made.drawings();
            editor.tree().selectItem(editor.category);
            while (made.drawings() < before + kCount) {
                const double start = now();
                QApplication::processEvents();
                times.push_back(since(start));
                if (!made.isWorking())
                    list.verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepAdd);
            }
        }
        report(state, std::move(times));
    }
    fs::remove(file);
}

} // namespace

BENCHMARK(tab)
    ->ArgNames({"pane", "filter"})
    ->Args({0, 0})
    ->Args({1, 0})
    ->Args({1, 1})
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(type)->ArgName("pane")->Arg(0)->Arg(1)->UseManualTime()->Iterations(1)->Unit(
    benchmark::kMillisecond);
BENCHMARK(change)->ArgName("pane")->Arg(0)->Arg(1)->UseManualTime()->Iterations(1)->Unit(
    benchmark::kMillisecond);
BENCHMARK(thumbnails)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    GeneratedStandard::takeScale(argc, argv);
    QApplication application(argc, argv);
    QApplication::setStyle(new KorStyle);
    KOSettings::getInstance().useFile(fs::temp_directory_path() / "detailstyles-bench-settings.ini");
    ModuleResources::setUp({});
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
