#include "shell/EditorApplication.h"

#include "controls/KorStyle.h"
#include "services/Prompts.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace {

// The buttons and file dialogs of the library itself.
void translateLibrary() {
    auto* texts = new QTranslator(qApp);
    const QString name = "qtbase_" + QString::fromStdString(Prompts::language());
    if (texts->load(name, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(texts);
}

} // namespace

void prepareEditorApplication() {
    QApplication::setApplicationName(QStringLiteral("detailstyles"));
    QApplication::setDesktopFileName(QStringLiteral("arpa.home.detailstyles"));
    QApplication::setStyle(new KorStyle);
    translateLibrary();
}
