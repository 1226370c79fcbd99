#include "app/EditCommand.h"

#include "app/Console.h"
#include "controls/KorStyle.h"
#include "model/KorDSMDialogFactory.h"
#include "services/KOSettings.h"
#include "services/KorExchangeUtilities.h"
#include "services/KorHostReport.h"
#include "session/KorDSMHandOver.h"
#include "shell/DataFolder.h"

#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <cstdio>

namespace {

// Paints the window once it has settled, then closes it. `painted` tells whether the file was written.
void paintWhenOpen(QWidget* window, const EditOptions& options, bool& painted) {
    QTimer::singleShot(0, window, [window, &options, &painted] {
        int width = 0;
        int height = 0;
        if (std::sscanf(options.size.c_str(), "%dx%d", &width, &height) == 2)
            window->resize(width, height);
        QApplication::processEvents();
        painted = window->grab().save(QString::fromStdString(options.screenshot), "PNG");
        window->close();
    });
}

// What was handed over, one "name value" pair a line.
void printHandOver() {
    int status = 0;
    const KorExchangeQueue& queue = KorExchangeUtilities::getNamedQueue(KorDSMHandOver::kQueue, status, 0);
    if (!queue.has("RESULT1"))
        return;
    std::printf("used-detail-key %d\nused-number %d\nused-source %s\n", queue.getInt("RESULT1"),
                queue.getInt("RESULT2"), queue.getString("RESULT3").c_str());
    if (queue.has("RESULT4"))
        std::printf("used-add-in %d\n", queue.getInt("RESULT4"));
}

} // namespace

int openEditor(int& argc, char** argv, DataFolder& folder, const EditOptions& options) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("detailstyles"));
    QApplication::setStyle(new KorStyle);
    KOSettings::getInstance().setPathData(folder.path());
    for (const KorString& problem : folder.problems())
        KorHostReport::add(problem);

    KorDSMDialogFactory factory(nullptr);
    bool painted = false;
    if (!options.screenshot.empty()) {
        KorHostReport::take();
        paintWhenOpen(factory.window(), options, painted);
    }
    factory.DoModal();
    if (!options.screenshot.empty() && !painted) {
        Console::complain("The picture " + options.screenshot +
                          " could not be written. Check that its folder exists and may be written.");
        return kExitFailed;
    }
    printHandOver();
    return kExitDone;
}
