#include "shell/DrawingOutput.h"

#include "base/Translation.h"
#include "controls/KorPictures.h"
#include "controls/KorQt.h"
#include "services/KorTextFile.h"
#include "services/Prompts.h"
#include "session/KorDSMExchange.h"
#include "shell/DrawingFile.h"
#include "shell/Refusal.h"
#include "shell/WhenFree.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QMimeData>
#include <QPainter>
#include <QWidget>
#include <QtPrintSupport/QPrintDialog>
#include <QtPrintSupport/QPrinter>

namespace {

constexpr int kBitmap = 2099;
constexpr int kSave = 1105;
constexpr int kSaveSheet = 1106;
constexpr int kCopy = 1107;
constexpr int kPrint = 1108;
constexpr int kPrintSheet = 1109;
constexpr int kPictures = 1111; // "%s picture"

constexpr const char* kEndings[] = {"pdf", "svg", "png"};

QString filterOf(const char* ending) {
    const QString kind =
        toQt(KorString::format(Prompts::dsm(kPictures), {fromQt(QString::fromLatin1(ending).toUpper())}));
    return QStringLiteral("%1 (*.%2)").arg(kind, QLatin1String(ending));
}

} // namespace

DrawingOutput::DrawingOutput(QWidget& window, QWidget& view, Page page)
    : m_window(window), m_page(std::move(page)) {
    struct Command {
        const char* key;
        void (DrawingOutput::*act)(bool isSheet);
        int prompt;
        bool isSheet;
    };
    static constexpr Command kCommands[] = {
        {"Ctrl+Shift+S", &DrawingOutput::save, kSave, false},
        {"", &DrawingOutput::save, kSaveSheet, true},
        {"Ctrl+C", &DrawingOutput::copy, kCopy, false},
        {"Ctrl+P", &DrawingOutput::print, kPrint, false},
        {"", &DrawingOutput::print, kPrintSheet, true},
    };
    for (const Command& command : kCommands) {
        auto* action = new QAction(KorPictures::bitmap(kBitmap), toQt(Prompts::dsm(command.prompt)), this);
        action->setShortcut(QKeySequence(QLatin1String(command.key)));
        // Elsewhere the key copies what has the focus there.
        if (command.act == &DrawingOutput::copy)
            action->setShortcutContext(Qt::WidgetShortcut);
        connect(action, &QAction::triggered, this, [this, command] {
            whenFree(this, [this, command] { (this->*command.act)(command.isSheet); });
        });
        window.addAction(action);
        view.addAction(action);
        m_actions << action;
    }
}

void DrawingOutput::setEnabled(bool isEnabled) {
    for (QAction* action : m_actions)
        action->setEnabled(isEnabled);
}

void DrawingOutput::save(bool isSheet) {
    const std::optional<PicturePage> page = m_page(isSheet);
    if (!page)
        return;
    QFileDialog dialog(&m_window, toQt(Prompts::dsm(isSheet ? kSaveSheet : kSave)).remove(u'…'));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    QStringList filters;
    for (const char* ending : kEndings)
        filters << filterOf(ending);
    dialog.setNameFilters(filters);
    const auto suffix = [&filters](const QString& filter) {
        return QLatin1String(kEndings[std::max<qsizetype>(filters.indexOf(filter), 0)]);
    };
    dialog.setDefaultSuffix(suffix(filters.first()));
    connect(&dialog, &QFileDialog::filterSelected, &dialog,
            [&dialog, suffix](const QString& filter) { dialog.setDefaultSuffix(suffix(filter)); });
    dialog.selectFile(toQt(KorDSMExchange::fileNameOf(KorString(page->title))) + u'.' +
                      dialog.defaultSuffix());
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    // A name may have points of its own, of which none begins an ending.
    QString name = dialog.selectedFiles().first();
    const bool isWhole = DrawingFile::isKnown(name.toStdString());
    if (!isWhole)
        name += u'.' + dialog.defaultSuffix();
    const std::filesystem::path file = name.toStdString();
    if (const Result<> written = KorTextFile::replace(file, DrawingFile::bytes(file, *page), isWhole);
        !written)
        return refuse(&m_window, KorString(written.error));
    Q_EMIT told(toQt(KorString::format(translated("Saved as \"%s\"."), {file.string()})));
}

void DrawingOutput::copy(bool isSheet) {
    const std::optional<PicturePage> page = m_page(isSheet);
    if (!page)
        return;
    auto* content = new QMimeData; // the clipboard's
    content->setImageData(DrawingFile::imageOf(*page));
    content->setData(QStringLiteral("image/svg+xml"),
                     QByteArray::fromStdString(DrawingFile::bytes("a.svg", *page)));
    QApplication::clipboard()->setMimeData(content);
    Q_EMIT told(toQt(translated("The drawing can be pasted into other programs.")));
}

void DrawingOutput::print(bool isSheet) {
    const std::optional<PicturePage> page = m_page(isSheet);
    if (!page)
        return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(QString::fromStdString(page->title));
    printer.setPageOrientation(page->box.width() > page->box.height() ? QPageLayout::Landscape
                                                                      : QPageLayout::Portrait);
    QPrintDialog dialog(&printer, &m_window);
    dialog.setOptions(QAbstractPrintDialog::PrintToFile);
    if (dialog.exec() != QDialog::Accepted)
        return;
    QPainter painter;
    if (!painter.begin(&printer))
        return refuse(&m_window, translated("The printer takes nothing; look whether it is on and reached."));
    DrawingFile::paint(painter, *page, DrawingFile::scaleFor(*page, printer));
}
