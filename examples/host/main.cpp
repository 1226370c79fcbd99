#include <detailstyles/EditorSession.h>
#include <detailstyles/KorDSMDialogFactory.h>
#include <detailstyles/KorExchangeUtilities.h>
#include <detailstyles/KorOdbcMan.h>

#include <QApplication>
#include <QDialog>
#include <QPushButton>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

/// Where the editor opens: the texts of the entries from the database down, joined by '/'. It opens where it
/// was left when that is empty.
void selectEntry(KorDSMDataStructure& structure, const char* place) {
    const QStringList texts = QString::fromUtf8(place).split('/', Qt::SkipEmptyParts);
    if (texts.isEmpty())
        return;
    constexpr auto kSection = KorDSMDefines::kViewDetailStyles;
    structure.setSelectedSection(kSection);
    KorArray<KorString>& path = structure.getSelectedPath(kSection);
    path.clear();
    path.append(structure.getDetailStylesSection()->getDisplayName());
    for (const QString& text : texts)
        path.append(text.toStdString());
}

/// For a run without a user: what a click on the window's button of that text does.
void pressWhenOpen(const KorDSMDialogFactory& factory, const char* button) {
    QTimer::singleShot(0, factory.window(), [window = factory.window(), text = QString::fromUtf8(button)] {
        for (QPushButton* candidate : window->findChildren<QPushButton*>())
            if (candidate->text().remove('&') == text)
                candidate->click();
        // Nothing is left open, whatever is selected.
        if (window->isVisible())
            static_cast<QDialog*>(window)->reject();
    });
}

/// Lets the user choose a view request; the one of this key is selected at first. `isPressed` stands for a
/// user who takes it.
void chooseViewRequest(int key, bool isPressed) {
    int status = 0;
    KorExchangeQueue& queue = KorExchangeUtilities::getNamedQueue("REQUESTDIALOG", status, 0);
    queue.push("RequestKey", key);
    if (isPressed)
        QTimer::singleShot(0, qApp, [] {
            if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
                dialog->accept();
        });
    if (KorDSMDialogFactory::openRequestDialog() == 1)
        std::printf("view request %d of %d, %d\n", queue.getInt("RequestKey"),
                    queue.getInt("DSNForRequestKey"), queue.getInt("IdxForRequestKey"));
    queue.clear();
}

/// Which style the user chose by Use. A host takes the results out, or they are still there when the editor
/// is left otherwise the next time.
void printUsedStyle() {
    int status = 0;
    KorExchangeQueue& queue = KorExchangeUtilities::getNamedQueue("DETAILSTYLESMANAGERNEW", status, 0);
    if (queue.has("RESULT1"))
        std::printf("used %d %d of %s\n", queue.getInt("RESULT1"), queue.getInt("RESULT2"),
                    queue.getString("RESULT3").c_str());
    if (queue.has("RESULT4"))
        std::printf("add-in number %d\n", queue.getInt("RESULT4"));
    queue.clear();
}

/// Opens the editor once, and looks at what came of it. Returns whether it could be opened.
bool runEditor(KorDSMDialogFactory& factory) {
    KorOdbcMan::m_DSMReloadInfo = 0;
    KorOdbcMan::m_DSMResetDetViewRequestCache = 0;
    const int result = factory.DoModal();
    std::printf("result %d\napplied %d\nreload %d\ndrop view requests %d\n", result,
                KorDSMDataStructure::m_bApplyWasPressed ? 1 : 0, KorOdbcMan::m_DSMReloadInfo,
                KorOdbcMan::m_DSMResetDetViewRequestCache);
    printUsedStyle();
    return result == 1 || result == 2;
}

void printEditable(const char* source, eDSN dsn, eIndex index) {
    KorOdbcMan::setCurrentDSN(dsn);
    KorOdbcMan::setCurrentAddIn(index);
    std::printf("%s may be edited %d\n", source, KorOdbcMan::getEditableStatus() ? 1 : 0);
}

} // namespace

// The least that a host does: it brings the application, opens the editor as often as the user wants, and
// looks at what came of it. `host [--at DATABASE/ADD-IN/CATEGORY/STYLE] BUTTON ... [--request KEY]` runs
// without a user: it presses a button in each of the editors that it opens, and takes the view request of
// that key.
int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const EditorSession session; // what its editors share
    KorDSMDataStructure& structure = KorDSMDialogFactory::getDSMDataStructure();
    std::printf("section %s\n", structure.getDetailStylesSection()->getDisplayName().c_str());

    KorDSMDialogFactory factory(nullptr);
    bool opened = argc > 1 || runEditor(factory);
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--at") == 0 && i + 1 < argc) {
            selectEntry(structure, argv[++i]);
            continue;
        }
        if (std::strcmp(argv[i], "--request") == 0 && i + 1 < argc) {
            chooseViewRequest(std::atoi(argv[++i]), true);
            continue;
        }
        pressWhenOpen(factory, argv[i]);
        opened = runEditor(factory) && opened;
    }
    std::printf("add-ins %d\n", structure.getNumberOfAddIns());
    printEditable("Standard", KorDSNDefinitions::kStandard, KorDSNDefinitions::kStandardIndex);
    printEditable("User", KorDSNDefinitions::kUser, KorDSNDefinitions::kUserIndex);
    return opened ? 0 : 1;
}
