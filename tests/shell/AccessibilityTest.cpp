#include "support/Accessibility.h"
#include "controls/KorLineEdit.h"
#include "controls/KorListCtrl.h"
#include "controls/KorQt.h"
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
#include "dialogs/KorDSMDialogPassword.h"
#include "dialogs/KorDSMDialogSearch.h"
#include "dialogs/KorDSMDialogSources.h"
#include "dialogs/KorDSMDialogWhereUsed.h"
#include "model/KorDSMFamilies.h"
#include "services/CKorHelp.h"
#include "services/KorResources.h"
#include "services/Prompts.h"
#include "shell/EditorFixture.h"
#include "shell/HelpWindow.h"
#include "shell/KorDSMViewRequestDialog.h"
#include "support/CutTexts.h"
#include "support/DrawnContrast.h"
#include "support/Palettes.h"

#include <QProcess>
#include <QScrollArea>
#include <QScrollBar>

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
        const std::string file = m_folder.file("brought.dsdb");
        std::filesystem::copy_file(path("user.dsdb"), file,
                                   std::filesystem::copy_options::overwrite_existing);
        const KorDSMImport import(file);
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
        add(std::type_identity<KorDSMDialogImport>(), import, SourceId::user());
        add(std::type_identity<KorDSMDialogSources>(), path(""));
        add(
            std::type_identity<KorDSMDialogSearch>(), search, [](const KorDSMSearchHit&) { return QIcon(); },
            "hb");
        add(std::type_identity<KorDSMDialogPassword>(), "The server \"db\" does not let you in.", "anna");
        for (const auto& dialog : dialogs) {
            SCOPED_TRACE(dialog->metaObject()->className());
            dialog->show();
            dialog->activateWindow();
            QApplication::processEvents();
            visit(*dialog);
            dialog->hide();
        }
        const RowArray& views = m_databases->source(SourceId::user())->table(kTableViewRequest).rows();
        KorDSMViewRequestDialog request(views.at(0).key, nullptr);
        whenShown<KorDSMViewRequestDialog>([&visit](KorDSMViewRequestDialog& dialog) {
            SCOPED_TRACE("view request");
            visit(dialog);
            dialog.reject();
        });
        request.DoModal();
        CKorHelp::showTopic("_korDisplayDetailStyles");
        for (QWidget* window : QApplication::topLevelWidgets())
            if (auto* help = qobject_cast<HelpWindow*>(window); help && help->isVisible()) {
                SCOPED_TRACE("help");
                visit(*help);
                help->close();
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
    // Each letter once, none where all letters of the text have gone to others, and behind each what it is
    // for. Fields that stand alone: above a tree or a list, and before the button that fills it.
    inline static const std::set<int> kAlone = {1200, 1210, 1063, 2402, 2421};
    static void expectOwnMnemonics(QWidget& window) {
        std::map<QKeySequence, QString> known;
        std::vector<QString> without;
        std::set<const QWidget*> reached;
        for (const QWidget* widget : window.findChildren<QWidget*>()) {
            const auto* button = qobject_cast<const QAbstractButton*>(widget);
            const auto* label = qobject_cast<const QLabel*>(widget);
            const auto* tool = qobject_cast<const QToolButton*>(widget);
            const auto* box = qobject_cast<const QGroupBox*>(widget);
            const bool isShort = tool && tool->toolButtonStyle() == Qt::ToolButtonIconOnly;
            const int number = KorControls::id(widget);
            const QString text = button && !isShort && number != 1 && number != 2 ? button->text()
                                 : label && label->buddy()                        ? label->text()
                                 : box                                            ? box->title()
                                                                                  : QString();
            const QKeySequence key = QKeySequence::mnemonic(text);
            if (!widget->isVisible() || text.isEmpty())
                continue;
            if (!key.isEmpty() || !box)
                reached.insert(label ? label->buddy() : widget);
            if (key.isEmpty() && !box)
                without.push_back(text);
            if (key.isEmpty())
                continue;
            const auto [other, isNew] = known.emplace(key, text);
            EXPECT_TRUE(isNew) << text.toStdString() << " and " << other->second.toStdString();
        }
        for (const QString& text : without)
            for (const QChar letter : text)
                EXPECT_TRUE(!letter.isLetterOrNumber() ||
                            known.contains(QKeySequence::mnemonic(QStringLiteral("&") + letter)))
                    << text.toStdString() << " has no letter, and " << QString(letter).toStdString()
                    << " is free";
        for (const QWidget* field : window.findChildren<QWidget*>())
            if (field->isVisible() && KorControls::id(field) >= 1000 &&
                !kAlone.contains(KorControls::id(field)) &&
                (qobject_cast<const QLineEdit*>(field) || qobject_cast<const QComboBox*>(field))) {
                const bool isReached = std::ranges::any_of(
                    reached, [field](const QWidget* by) { return by == field || by->isAncestorOf(field); });
                EXPECT_TRUE(isReached) << field->metaObject()->className() << ' ' << KorControls::id(field)
                                       << ' ' << field->accessibleName().toStdString();
            }
        expectThatLettersLead(window);
    }
    static void expectThatLettersLead(QWidget& window) {
        window.activateWindow();
        for (const QLabel* label : window.findChildren<QLabel*>()) {
            const QString key = QKeySequence::mnemonic(label->text()).toString();
            if (!label->isVisible() || key.isEmpty() || !label->buddy()->isEnabled() ||
                key.back().unicode() > 'Z')
                continue;
            QTest::keyClick(&window, key.back().toLatin1(), Qt::AltModifier);
            const QWidget* focus = QApplication::focusWidget();
            EXPECT_TRUE(focus == label->buddy() || label->buddy()->isAncestorOf(focus))
                << key.toStdString() << " of " << label->text().toStdString() << " leads to "
                << (focus ? focus->metaObject()->className() : "nothing");
        }
    }
    // Fields, and the captions of fields, that are shown and are not to be seen as a whole.
    static QStringList lostFields(const QWidget& page) {
        QStringList lost;
        for (const QWidget* part : page.findChildren<QWidget*>()) {
            const auto* caption = qobject_cast<const QLabel*>(part);
            const bool isField = qobject_cast<const QLineEdit*>(part) || qobject_cast<const QComboBox*>(part);
            if (!part->isVisible() ||
                !(caption ? caption->buddy() != nullptr : isField && KorControls::id(part) > 0))
                continue;
            QRect seen(part->mapTo(&page, QPoint()), part->size());
            for (const QWidget* around = part->parentWidget(); around != &page;
                 around = around->parentWidget())
                seen &= QRect(around->mapTo(&page, QPoint()), around->size());
            if (seen.size() != part->size() || part->height() < part->minimumSizeHint().height())
                lost << QStringLiteral("%1 %2 of %3")
                            .arg(KorControls::id(part))
                            .arg(caption ? caption->text() : part->accessibleName(),
                                 QLatin1String(page.metaObject()->className()));
        }
        return lost;
    }
    // What the user sees and reaches in a window.
    static void look(QWidget& window) {
        window.show();
        QApplication::processEvents();
        EXPECT_GT(expectReadable(window), 1);
        EXPECT_GT(expectNamed(window), 0);
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

// As it is drawn, whatever the palette says.
TEST_F(Accessibility, TextsIconsAndMarksStandOutInEachPalette) {
    inEachPalette([this] {
        open();
        onEachPage([](QWidget& window) { EXPECT_GT(DrawnContrast(window).expectSeen(), 20); });
        onEachDialog([](QDialog& dialog) { EXPECT_GT(DrawnContrast(dialog).expectSeen(), 0); });
    });
}

// Desktops turn dark in the evening, whatever is open.
TEST_F(Accessibility, WhatIsOpenTakesTheColoursThatTheDesktopTurnsTo) {
    QList<QPalette> fresh;
    qsizetype at = 0;
    const auto seen = [](QWidget& window) {
        QWidgetList all = window.findChildren<QWidget*>();
        all.removeIf([](const QWidget* widget) { return !widget->isVisible(); });
        return all << &window;
    };
    const auto keep = [&](QWidget& window) {
        for (const QWidget* widget : seen(window))
            fresh << widget->palette();
    };
    const auto compare = [&](QWidget& window) {
        QApplication::setPalette(desktopPalette(true));
        QApplication::processEvents();
        for (const QWidget* widget : seen(window)) {
            ASSERT_LT(at, fresh.size());
            EXPECT_TRUE(widget->palette() == fresh.at(at++))
                << widget->metaObject()->className() << ' ' << KorControls::id(widget) << " of "
                << window.metaObject()->className();
        }
        QApplication::setPalette(desktopPalette(false));
        QApplication::processEvents();
    };
    QApplication::setPalette(desktopPalette(true));
    open();
    onEachPage(keep);
    onEachDialog(keep);
    QApplication::setPalette(desktopPalette(false));
    open();
    onEachPage(compare);
    onEachDialog(compare);
    EXPECT_EQ(at, fresh.size());
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

// 1366 x 768 pixels at 200 %, less the frame and the title, and a window that is made smaller.
TEST_F(Accessibility, NoPageScrollsSidewaysOrLosesFieldsOnASmallScreen) {
    for (const auto& [language, width] : {std::pair("en", 675), {"de", 675}, {"en", 820}}) {
        Prompts::load(KorResources::folder() / "prompts", language);
        open();
        m_dialog->resize(width, 344);
        QStringList wide;
        QStringList lost;
        onEachPage([&](QWidget&) {
            for (int round = 0; round < 5; ++round) // captions fold one after the other
                QApplication::processEvents();
            const auto* area = page()->parentWidget()->parentWidget();
            const QScrollBar* bar = qobject_cast<const QScrollArea*>(area)->horizontalScrollBar();
            if (bar->maximum() > 0)
                wide << QStringLiteral("%1 by %2").arg(toQt(page()->title())).arg(bar->maximum());
            lost << lostFields(*page());
        });
        EXPECT_TRUE(wide.isEmpty()) << language << ": " << wide.join(", ").toStdString();
        EXPECT_TRUE(lost.isEmpty()) << language << ' ' << width << ": " << lost.join(", ").toStdString();
        close();
    }
    Prompts::load(KorResources::folder() / "prompts", "en");
}

} // namespace
