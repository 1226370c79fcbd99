#include "support/Accessibility.h"
#include "controls/KorListCtrl.h"
#include "controls/TabContent.h"
#include "dialogs/KorDSMDialogAddView.h"
#include "dialogs/KorDSMDialogConfirmation.h"
#include "dialogs/KorDSMDialogConflicts.h"
#include "dialogs/KorDSMDialogDeepCopy.h"
#include "dialogs/KorDSMDialogDimensionSettings.h"
#include "dialogs/KorDSMDialogInUse.h"
#include "dialogs/KorDSMDialogLoadLinetype.h"
#include "dialogs/KorDSMDialogNewItem.h"
#include "dialogs/KorDSMDialogNewItemWithGroup.h"
#include "dialogs/KorDSMDialogSearch.h"
#include "dialogs/KorDSMDialogWhereUsed.h"
#include "model/KorDSMFamilies.h"
#include "services/KorResources.h"
#include "services/Prompts.h"
#include "shell/EditorFixture.h"
#include "support/CutTexts.h"
#include "support/Palettes.h"

#include <QProcess>

#include <map>
#include <set>
#include <type_traits>

namespace {

class Accessibility : public EditorFixture {
protected:
    ~Accessibility() override { QApplication::setPalette(QPalette()); }

    // Windows take the palette that is there when they are made.
    static void inEachPalette(const std::function<void()>& visit) {
        for (const QPalette& palette : desktopPalettes()) {
            QApplication::setPalette(palette);
            visit();
        }
    }
    // All dialogs, each on something that it can be asked of.
    void onEachDialog(const std::function<void(QDialog&)>& visit) {
        const RowArray& sets = m_databases->source(SourceId::user())->table(kTableQualifierSet).rows();
        const RowRef rails{kTableQualifierSet, sets.at(0).key};
        const RowRef style{kTableDetailStyle,
                           m_databases->source(SourceId::user())->table(kTableDetailStyle).rows().at(0).key};
        KorDSMSearch search({SourceId::user(), {}}, {});
        std::vector<std::unique_ptr<QDialog>> dialogs;
        const auto add = [&dialogs]<typename Dialog, typename... Args>(std::type_identity<Dialog>,
                                                                       Args&&... args) {
            dialogs.push_back(std::make_unique<Dialog>(std::forward<Args>(args)..., nullptr));
        };
        const auto users = KorDSMWhereUsed::usagesOf(SourceId::user(), rails);
        add(std::type_identity<KorDSMDialogConfirmation>(), kTableQualifierSet, KorOdbcKey(rails.key));
        add(std::type_identity<KorDSMDialogInUse>(), "HB rails", users);
        add(std::type_identity<KorDSMDialogLoadLinetype>());
        add(std::type_identity<KorDSMDialogNewItem>(), KorDSMDefines::kDetailStyle, "HB post 1:15", false);
        add(std::type_identity<KorDSMDialogNewItemWithGroup>(), KorDSMDefines::kDetailStyle, "", "");
        add(std::type_identity<KorDSMDialogWhereUsed>(), "HB rails", SourceId::user(), rails);
        add(std::type_identity<KorDSMDialogAddView>(), [](VELComboTree&) {});
        add(std::type_identity<KorDSMDialogConflicts>(), std::vector<OutsideChange>());
        add(std::type_identity<KorDSMDialogDeepCopy>(), SourceId::user(), std::vector<RowRef>{style});
        add(std::type_identity<KorDSMDialogDimensionSettings>(), SourceId::user());
        add(
            std::type_identity<KorDSMDialogSearch>(), search, [](const KorDSMSearchHit&) { return QIcon(); },
            "hb");
        for (const auto& dialog : dialogs) {
            SCOPED_TRACE(dialog->metaObject()->className());
            dialog->show();
            QApplication::processEvents();
            visit(*dialog);
            dialog->hide();
        }
    }
    // Each page of each kind of record, by the first record of it that a tree shows.
    void onEachPage(const std::function<void(QWidget&)>& visit) {
        std::set<int> visited;
        for (const KorDSMFamily& family : KorDSMFamilies::all()) {
            const auto isShown = [&] {
                return page() && std::ranges::find(family.pages, page()->templateId()) != family.pages.end();
            };
            const RowArray& rows = m_databases->source(SourceId::user())->table(family.table).rows();
            for (int i = 0; i < rows.size() && !family.pages.isEmpty() && !isShown(); ++i) {
                DsmGoToRecord place;
                place.source = SourceId::user();
                place.row = {family.table, rows.at(i).key};
                KorDSMMainWindow::sendMessage(place);
            }
            for (int tab = 0; isShown() && tab < control<KorTabCtrl>(1002)->currentContent()->pageCount();
                 ++tab) {
                showTab(tab);
                SCOPED_TRACE(page()->metaObject()->className());
                visit(*m_dialog);
                visited.insert(page()->templateId());
            }
        }
        EXPECT_GE(visited.size(), 20u);
    }
    static void expectOwnMnemonics(const QWidget& window) {
        std::map<QKeySequence, QString> known;
        for (const QWidget* widget : window.findChildren<QWidget*>()) {
            const auto* button = qobject_cast<const QAbstractButton*>(widget);
            const auto* label = qobject_cast<const QLabel*>(widget);
            const QString text = button                    ? button->text()
                                 : label && label->buddy() ? label->text()
                                                           : QString();
            const QKeySequence key = QKeySequence::mnemonic(text);
            if (!widget->isVisible() || key.isEmpty())
                continue;
            const auto [other, isNew] = known.emplace(key, text);
            EXPECT_TRUE(isNew) << text.toStdString() << " and " << other->second.toStdString();
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
    inEachPalette([this] {
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
    inEachPalette([this] { onEachDialog([](QDialog& dialog) { look(dialog); }); });
}

// A letter that leads to two controls leads to neither at once.
TEST_F(Accessibility, NoTwoMnemonicsOfAWindowAreTheSameInAnyLanguage) {
    for (const char* language : {"en", "de"}) {
        Prompts::load(KorResources::folder() / "prompts", language);
        open();
        select(kStyle);
        onEachPage([](QWidget& window) { expectOwnMnemonics(window); });
        onEachDialog([](QDialog& dialog) { expectOwnMnemonics(dialog); });
    }
    Prompts::load(KorResources::folder() / "prompts", "en");
}

// A language of texts that are 40 % longer: what has room for these has enough for most languages.
TEST_F(Accessibility, NoTextIsCutInALanguageOfLongerTexts) {
    const QString folder = QString::fromStdString(m_folder.file("resources"));
    ASSERT_EQ(QProcess::execute(QStringLiteral(SOURCE_DIR "/tools/pseudo-language"), {folder}), 0);
    Prompts::load(std::filesystem::path(folder.toStdString()) / "prompts", "qp");
    open();
    m_dialog->resize(1366, 768);
    QStringList cut;
    const auto look = [&cut](QWidget& window) {
        for (const QString& text : cutTexts(window))
            if (!cut.contains(text))
                cut << text;
    };
    onEachPage(look);
    onEachDialog(look);
    EXPECT_TRUE(cut.isEmpty()) << cut.join('\n').toStdString();
    close();
    Prompts::load(KorResources::folder() / "prompts", "en");
}

} // namespace
