#include <model/KorDSMDialogFactory.h>

#include <QApplication>
#include <QDialog>
#include <QTimer>

#include <cstdio>
#include <cstring>

// The least that a host does: it brings the application, opens the editor, and looks at what came of it.
int main(int argc, char** argv) {
    QApplication application(argc, argv);
    KorDSMDialogFactory factory(nullptr);
    if (argc > 1 && std::strcmp(argv[1], "--close") == 0)
        QTimer::singleShot(0, factory.window(), [&] { static_cast<QDialog*>(factory.window())->reject(); });
    const int result = factory.DoModal();

    KorDSMDataStructure& structure = KorDSMDialogFactory::getDSMDataStructure();
    std::printf("result %d\nadd-ins %d\napplied %d\n", result, structure.getNumberOfAddIns(),
                KorDSMDataStructure::m_bApplyWasPressed ? 1 : 0);
    return result == 1 || result == 2 ? 0 : 1;
}
