#include "support/Accessibility.h"
#include "controls/KorListCtrl.h"
#include "dialogs/KorDSMDialogConfirmation.h"
#include "dialogs/KorDSMDialogInUse.h"
#include "dialogs/KorDSMDialogLoadLinetype.h"
#include "dialogs/KorDSMDialogNewItem.h"
#include "dialogs/KorDSMDialogNewItemWithGroup.h"
#include "dialogs/KorDSMDialogWhereUsed.h"
#include "shell/EditorFixture.h"
#include "support/Palettes.h"

namespace {

class Accessibility : public EditorFixture {
protected:
    ~Accessibility() override { QApplication::setPalette(QPalette()); }

    // Visits in light and dark; windows take the palette that is there when they are made.
    static void inBothPalettes(const std::function<void()>& visit) {
        for (const bool dark : {false, true}) {
            QApplication::setPalette(desktopPalette(dark));
            visit();
        }
    }
    // What the user sees and reaches in a window.
    static void look(QWidget& window) {
        window.show();
        QApplication::processEvents();
        EXPECT_GT(expectReadable(window), 1);
        EXPECT_GT(expectNamed(window), 1);
    }
};

TEST_F(Accessibility, EveryControlOfTheWindowIsReadableAndHasAName) {
    inBothPalettes([this] {
        open();
        select({"User", "Hallberg: posts and beams"});
        EXPECT_EQ(accessibleName(*control<KorListCtrl>(1003)), QStringLiteral("Hallberg: posts and beams"));
        look(*m_dialog);
        select({"Standard"});
        look(*m_dialog);
    });
}

TEST_F(Accessibility, EveryControlOfTheDialogsIsReadableAndHasAName) {
    open();
    select({"User", "Hallberg: posts and beams", "HB post 1:15"});
    const std::int32_t set = m_databases->here()->table(kTableQualifierSet).find("HB rails")->key;
    const RowRef rails{kTableQualifierSet, set};
    inBothPalettes([&] {
        std::vector<std::unique_ptr<QDialog>> dialogs;
        dialogs.push_back(
            std::make_unique<KorDSMDialogConfirmation>(kTableQualifierSet, KorOdbcKey(set), nullptr));
        dialogs.push_back(std::make_unique<KorDSMDialogInUse>(
            "HB rails", KorDSMWhereUsed::usagesOf(SourceId::user(), rails), nullptr));
        dialogs.push_back(std::make_unique<KorDSMDialogLoadLinetype>(nullptr));
        dialogs.push_back(std::make_unique<KorDSMDialogNewItem>(KorDSMDefines::kDetailStyle, "HB post 1:15",
                                                                false, nullptr));
        dialogs.push_back(
            std::make_unique<KorDSMDialogNewItemWithGroup>(KorDSMDefines::kDetailStyle, "", "", nullptr));
        dialogs.push_back(
            std::make_unique<KorDSMDialogWhereUsed>("HB rails", SourceId::user(), rails, nullptr));
        for (const auto& dialog : dialogs) {
            SCOPED_TRACE(dialog->windowTitle().toStdString());
            look(*dialog);
        }
    });
}

} // namespace
