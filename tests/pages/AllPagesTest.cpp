#include "controls/KorFieldNote.h"
#include "controls/KorInfoCtrl.h"
#include "controls/KorLineEdit.h"
#include "controls/KorMFCGridCtrl.h"
#include "controls/KorMnemonics.h"
#include "controls/KorQt.h"
#include "controls/label/VELLabelDesignerCtrlWrap.h"
#include "operations/KorOdbcGUI.h"
#include "pages/ColumnsOnNoPage.h"
#include "pages/FormBody.h"
#include "pages/KorDSMFormPage.h"
#include "pages/PageFields.h"
#include "pages/PageFixture.h"
#include "pages/RecordButtons.h"
#include "services/CKorHelp.h"
#include "session/KorDSMValueText.h"
#include "shell/KorDSMPageRegistry.h"
#include "support/Accessibility.h"
#include "support/Palettes.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QGroupBox>
#include <QLabel>
#include <QTableWidget>
#include <QTextEdit>

#include <functional>
#include <set>

namespace {

constexpr int kNameColumn = 1;

// What holds for every page and for every row of its table.
class AllPages : public PageFixture {
protected:
    AllPages() { registry.createPages(&m_window); }

    // The style and the view that are edited, and one item for each other page; each with a twin. The view is
    // used by two styles, and so are its parts.
    void makeSamples(const KorString& styleName, const KorString& viewName) {
        samples = makeItems(styleName, viewName);
        twins = makeItems(styleName, viewName);
        for (const auto& [type, sample] : samples)
            sample->linkEqualItem(*twins.at(type));
    }

    // What is open to change only for some values has such.
    void makeEditableSamples() {
        makeSamples("HB railing, workshop", "HB railing panel");
        store(kTableLengthClip, row<StructDetViewRequest>("HB railing panel").lengthClipKey, 6, 3.0);
        const std::int32_t grid = row<StructDetailStyle>("HB railing, workshop").gridRefSettingsKey;
        const std::int32_t fromFile = row<StructLinetypes>("HIDDEN").key;
        store(kTableGridRefSettings, grid, 2, std::int64_t{1});
        store(kTableGridRefSettings, grid, 5, std::int64_t{fromFile});
        store(kTableAppearance, row<StructDetObjAppearance>().key, 3, std::int64_t{fromFile});
        for (const StructDetObjQualifierWithRole* part : rows<StructDetObjQualifierWithRole>())
            if (part->qualifierSetKey == row<StructDetObjQualifierSet>().key)
                store(kTableQualifierWithRole, part->key, 5,
                      std::int64_t{row<StructDetObjQualifierFilter>().key});
    }
    template <typename R>
    std::vector<const R*> rows() {
        std::vector<const R*> all;
        const RowArray& table = databases.here()->table(tableOf<R>).rows();
        for (int i = 0; i < table.size(); ++i)
            all.push_back(static_cast<const R*>(&table.at(i)));
        return all;
    }

    using Items = std::map<int, KorDSMDatabaseItem*>;

    Items makeItems(const KorString& styleName, const KorString& viewName) {
        auto& style = item<KorDsmDetailStyleItem>(styleName);
        auto* view = &style.addChild(std::make_unique<KorDsmViewRequestItem>());
        view->updateRecord(row<StructDetViewRequest>(viewName));
        Items items = {{KorDSMDefines::kDetailStyle, &style}, {KorDSMDefines::kViewRequest, view}};
        add<KorDsmReprMapRuleItem, KorDsmReprMapItem, KorDsmAppearanceItem, KorDsmQualifierSetItem,
            KorDsmAnnotationStrategyItem, KorDsmDimRequestItem, KorDsmPointSelectionItem,
            KorDsmViewDimensioningItem, KorDsmSystemAndBoxItem>(items);
        items[KorDSMDefines::kAnnotationArrangement] = arrangement(row<StructDetArrangerControl>(), false);
        items[KorDSMDefines::kSecondArrangerControl] = arrangement(row<StructDetArrangerStrategy>(), true);
        return items;
    }
    template <typename... Added>
    void add(Items& items) {
        (items.emplace(Added().type(), &item<Added>()), ...);
    }
    KorDSMDatabaseItem* arrangement(const StructRecord& record, bool isStrategy) {
        auto& made =
            *arrangements.emplace_back(std::make_unique<KorDsmAnnotationArrangementItem>(isStrategy));
        made.updateRecord(record);
        return &made;
    }

    // Shows one page after the other.
    void onEachPage(const std::function<void()>& visit) {
        int visited = 0;
        for (int type = 0; type < KorDSMDefines::kNumberOfItemTypes; ++type) {
            TabContent* group = registry.group(static_cast<KorDSMDefines::eItemType>(type));
            for (int i = 0; group && i < group->pageCount(); ++i) {
                ASSERT_TRUE(samples.contains(type)) << "no sample for items of type " << type;
                shown = samples.at(type);
                twin = twins.at(type);
                show(*group, *shown);
                turnTo(i);
                if (auto* list = page().findChild<KorMFCGridCtrl*>())
                    list->selectRows({0}); // a page can show more of what is selected
                SCOPED_TRACE("page " + std::to_string(page().templateId()));
                visit();
                ++visited;
            }
        }
        EXPECT_EQ(visited, 22);
    }
    void onEachField(const std::function<void(PageFields&, const PageField&)>& visit) {
        onEachPage([&] {
            for (PageFields* fields : page().findChildren<PageFields*>(QString(), Qt::FindDirectChildrenOnly))
                for (const PageField& field : fields->fields()) {
                    if (field.radios.empty() && !isOpen(field.control))
                        continue;
                    SCOPED_TRACE("column " + std::to_string(field.column));
                    visit(*fields, field);
                }
        });
    }

    bool isInForm(const PageField& field) {
        const auto forms = page().findChildren<FormBody*>();
        return qobject_cast<KorDSMFormPage*>(&page()) ||
               std::ranges::any_of(
                   forms, [&](const FormBody* form) { return form->isAncestorOf(&control(field.control)); });
    }
    bool isOpen(int id) { return isShown(id) && isEnabled(id); }

    // Changes the field to another value as a user does.
    void change(const PageField& field) {
        for (const auto& [radio, value] : field.radios)
            if (!isChecked(radio))
                return click(radio);
        if (auto* combo = qobject_cast<QComboBox*>(&control(field.control))) {
            ASSERT_GE(combo->count(), 2);
            choose(field.control, combo->itemText(combo->currentIndex() == 0 ? 1 : 0));
        } else if (qobject_cast<QLineEdit*>(&control(field.control))) {
            type(field.control, textOf(field.control) == "7" ? "8" : "7");
        } else {
            click(field.control);
        }
    }

    // Expects that the lengths of the parts that the grid lists end in this unit. Returns how many there are.
    static int expectUnits(const QTableWidget& grid, const char* unit) {
        std::set<QString> captions;
        for (const TableSchema& table : allTables())
            for (const Column& column : table.columns)
                if (column.kind == eColumnKind::kLength)
                    captions.insert(toQt(KorDSMValueText::columnCaption(table, column)));
        int lengths = 0;
        for (int column = 0; column < grid.columnCount(); ++column)
            for (int row = 0; row < grid.rowCount(); ++row)
                if (captions.contains(grid.horizontalHeaderItem(column)->text())) {
                    ++lengths;
                    EXPECT_TRUE(grid.item(row, column)->text().endsWith(QLatin1String(unit)));
                }
        return lengths;
    }

    // The notes beside the controls that are seen.
    std::string notes() {
        std::string found;
        for (QLabel* label : page().findChildren<QLabel*>())
            for (QWidget* part : KorControls::all(&page()))
                if (const QString note = KorFieldNote::textOf(part); label->isVisible() && !note.isEmpty() &&
                                                                     label->text() == note &&
                                                                     label->parent() == part->parent())
                    found += note.toStdString();
        return found;
    }

    // What the page shows, control by control.
    std::string shownState() {
        std::string state;
        for (const QWidget* part : KorControls::all(&page())) {
            const int id = KorControls::id(part);
            const auto* button = qobject_cast<const QAbstractButton*>(part);
            state += std::to_string(id) + ' ' + textOf(id) + (button && button->isChecked() ? " down" : "") +
                     (part->isEnabled() ? "\n" : " disabled\n");
        }
        return state;
    }

    KorDSMPageRegistry registry;
    std::vector<std::unique_ptr<KorDsmAnnotationArrangementItem>> arrangements;
    Items samples; // by item type
    Items twins;   // other items of the same records
    KorDSMDatabaseItem* shown = nullptr;
    KorDSMDatabaseItem* twin = nullptr;
};

TEST_F(AllPages, EachFieldWritesItsOwnColumnOnceAndFollowsWhenThatIsTakenBack) {
    makeEditableSamples();
    onEachField([this](PageFields& fields, const PageField& field) {
        const std::string before = shownState();
        change(field);
        ASSERT_EQ(steps().size(), 1U);
        const PendingStep& step = *steps()[0];
        EXPECT_EQ(step.table, fields.row().table);
        EXPECT_EQ(step.key, fields.row().key.getKey());
        EXPECT_EQ(step.column->number, field.column);
        if (step.table == shown->tableType()) {
            EXPECT_EQ(step.column->read(twin->record()), step.after) << "left a twin behind";
        }
        const std::string after = shownState();
        show(*shown);
        EXPECT_EQ(shownState(), after) << "what was chosen is not what was stored";
        takeBack(*shown);
        EXPECT_EQ(shownState(), before);
    });
}

// The tables whose rows a detail style consists of.
std::set<eTableType> tablesOfAStyle() {
    std::set<eTableType> reached = {kTableDetailStyle};
    for (std::size_t before = 0; before != reached.size();) {
        before = reached.size();
        for (const TableSchema& table : allTables())
            for (const Column& column : table.columns) {
                if (!column.isReference())
                    continue;
                const bool belongs =
                    column.role == eReferenceRole::kPartOf || column.role == eReferenceRole::kIdentifies;
                if (reached.contains(table.type))
                    reached.insert(column.target);
                else if (belongs && reached.contains(column.target))
                    reached.insert(table.type);
            }
    }
    return reached;
}

TEST_F(AllPages, EveryColumnThatAStyleReachesIsOnAPageOrSaysWhyNot) {
    makeEditableSamples();
    std::set<std::pair<eTableType, int>> written;
    std::set<std::pair<eTableType, int>> fields;
    onEachField([&](PageFields&, const PageField& field) {
        change(field);
        for (const PendingStep* step : steps())
            written.emplace(step->table, step->column->number);
        takeBack(*shown);
    });
    onEachPage([&] {
        for (PageFields* part : page().findChildren<PageFields*>())
            for (const PageField& field : part->fields())
                fields.emplace(part->row().table, field.column);
        // What a page writes by other means has tests of its own.
        for (const ShownColumns& row : page().shownColumns()) {
            for (const int column : row.columns)
                if (!fields.contains({row.table, column}))
                    written.emplace(row.table, column);
            for (const eTableType parts : row.parts)
                for (const Column& column : findTable(parts)->columns)
                    if (column.role != eReferenceRole::kPartOf)
                        written.emplace(parts, column.number);
        }
        written.emplace(shown->tableType(), kNameColumn); // at the head
        for (const TableSchema& table : allTables())
            for (const Column& column : table.columns)
                if (written.contains({table.type, column.number}) && RecordButtons::areFor(column))
                    written.emplace(column.target, kNameColumn);
    });
    for (const eTableType type : tablesOfAStyle())
        for (const Column& column : findTable(type)->columns) {
            const bool isOnPage =
                written.contains({type, column.isSlot() ? findTable(type)->firstSlot() : column.number});
            EXPECT_NE(isOnPage, !whyOnNoPage(type, column).empty())
                << findTable(type)->name << ' ' << column.name;
        }
}

TEST_F(AllPages, WhatIsStoredAlreadyIsNoChangeAndNobodyIsAsked) {
    makeEditableSamples();
    int again = 0;
    onEachField([&](PageFields&, const PageField& field) {
        for (const auto& [radio, value] : field.radios)
            if (isChecked(radio))
                click(radio);
        QWidget* chosen = field.radios.empty() ? &control(field.control) : nullptr;
        if (auto* combo = qobject_cast<QComboBox*>(chosen); combo && combo->currentIndex() >= 0) {
            combo->setFocus();
            combo->showPopup();
            QWidget* search = combo->findChild<QLineEdit*>();
            QTest::keyClick(search && search->isVisible() ? search : combo->view(), Qt::Key_Return);
        } else if (qobject_cast<QLineEdit*>(chosen)) {
            type(field.control, QString::fromStdString(textOf(field.control)));
        } else {
            return;
        }
        ++again;
        EXPECT_TRUE(m_asked.empty());
        EXPECT_TRUE(wroteNothing());
    });
    EXPECT_GT(again, 60);
    EXPECT_EQ(told<DsmDataChanged>(), 0);
}

// In millimetres the captions name the unit once; feet and inches stand with every number.
TEST_F(AllPages, LengthsNameTheirUnit) {
    makeEditableSamples();
    const auto isLength = [](const TableSchema& table, int column) {
        return table.column(column)->kind == eColumnKind::kLength;
    };
    for (const bool imperial : {false, true}) {
        store(kTableNumericDefault, row<StructNumericDefault>("C01_DistanceUnit").key, 2,
              imperial ? 1.0 : 0.0);
        int lengths = 0;
        onEachPage([&] {
            int expected = 0;
            for (const ShownColumns& part : page().shownColumns())
                for (const int column : part.columns)
                    expected += isLength(*findTable(part.table), column);
            for (PageFields* fields : page().findChildren<PageFields*>(QString(), Qt::FindDirectChildrenOnly))
                for (const PageField& field : fields->fields())
                    if (isLength(*findTable(fields->row().table), field.column)) {
                        EXPECT_EQ(textOf(field.control).ends_with('"'), imperial) << textOf(field.control);
                    }
            int named = 0;
            for (const QLabel* label : page().findChildren<QLabel*>())
                named +=
                    label->isVisible() && KorMnemonics::plain(label->text()).contains(QStringLiteral("(mm)"));
            EXPECT_EQ(named, imperial ? 0 : expected);
            for (const QTableWidget* grid : page().findChildren<QTableWidget*>())
                lengths += expectUnits(*grid, imperial ? "\"" : " mm");
            lengths += expected;
        });
        EXPECT_GT(lengths, 10);
        // Depths stand on no page of their own, but in lists and reports.
        const auto& depth = row<StructDetailDepthPosition>("Near the start");
        const TableSchema& depths = *findTable(kTableDepthPosition);
        EXPECT_EQ(KorDSMValueText::toText(depths, *depths.column(3), depth),
                  imperial ? "11.811023622\"" : "300 mm");
    }
}

TEST_F(AllPages, WhatIsSharedIsNotWrittenWithoutConsent) {
    m_answer = KorDSMGuardedWrite::kDecline;
    makeEditableSamples();
    onEachField([this](PageFields& fields, const PageField& field) {
        if (databases.ownerCount(fields.row().table, fields.row().key) < 2)
            return;
        const std::string before = shownState();
        m_asked.clear();
        change(field);
        ASSERT_EQ(m_asked.size(), 1U);
        EXPECT_EQ(m_asked[0].second, fields.row().key.getKey());
        EXPECT_TRUE(wroteNothing());
        // Forms show what is stored again; the others keep the choice and say that it is not stored.
        if (isInForm(field)) {
            EXPECT_EQ(shownState(), before);
            EXPECT_EQ(notes(), "");
        } else {
            EXPECT_NE(shownState(), before);
            EXPECT_EQ(notes(), "Not stored");
            QWidget* chosen = field.radios.empty() ? &control(field.control) : nullptr;
            if (auto* edit = qobject_cast<QLineEdit*>(chosen)) {
                QTest::keyClicks(edit, "9");
                QTest::keyClick(edit, Qt::Key_Escape);
                EXPECT_EQ(shownState(), before) << "what is dropped leads back to what is stored";
                EXPECT_EQ(notes(), "");
            }
        }
        show(*shown);
        EXPECT_EQ(shownState(), before);
        EXPECT_EQ(notes(), "");
    });
}

TEST_F(AllPages, AnEditedLabelIsWrittenOnceWhenItsPageIsLeft) {
    makeSamples("HB railing, workshop", "HB railing panel");
    std::set<std::pair<eTableType, int>> labels;
    onEachPage([&] {
        for (auto* designer : page().findChildren<VELLabelDesignerCtrlWrap*>()) {
            leave();
            EXPECT_TRUE(wroteNothing());
            show(*shown);
            keys(*designer->findChild<QTextEdit*>(), "X");
            EXPECT_TRUE(wroteNothing());
            leave();
            ASSERT_EQ(steps().size(), 1U);
            labels.emplace(steps()[0]->table, steps()[0]->column->number);
            EXPECT_NE(std::get<KorString>(steps()[0]->after).view().find('X'), std::string_view::npos);
            EXPECT_EQ(steps()[0]->column->read(twin->record()), steps()[0]->after) << "left a twin behind";
            takeBack(*shown);
        }
    });
    EXPECT_EQ(labels.size(), 4U) << "each in a column of its own";
}

// What leads elsewhere still works in a source that cannot be edited, and all texts can still be read.
TEST_F(AllPages, InStandardNothingCanBeChanged) {
    const std::set<std::pair<int, int>> goTo = {{2004, 1012}, {2004, 1014}, {2004, 1016}};
    useSource(SourceId::standard());
    makeSamples({}, "Beam, front, clipped");
    int copied = 0;
    onEachPage([&] {
        for (QWidget* part : KorControls::all(&page())) {
            const int id = KorControls::id(part);
            if (const auto* designer = qobject_cast<VELLabelDesignerCtrlWrap*>(part)) {
                EXPECT_FALSE(designer->IsEnabled());
            } else if (!qobject_cast<QGroupBox*>(part) && !qobject_cast<QLabel*>(part) &&
                       !qobject_cast<KorInfoCtrl*>(part)) {
                EXPECT_EQ(isEnabled(id), goTo.contains({page().templateId(), id})) << id;
            }
            if (auto* field = qobject_cast<QLineEdit*>(part);
                field && field->isVisible() && field->isEnabled()) {
                const QString before = field->text();
                QApplication::clipboard()->clear();
                type(id, QStringLiteral("7"));
                QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
                QTest::keyClick(field, Qt::Key_C, Qt::ControlModifier);
                EXPECT_EQ(field->text(), before) << id;
                EXPECT_EQ(QApplication::clipboard()->text(), before) << id;
                copied += !before.isEmpty();
            }
        }
    });
    EXPECT_GT(copied, 10);
    EXPECT_TRUE(wroteNothing());
}

TEST_F(AllPages, EachColumnThatAPageShowsLeadsToItsField) {
    makeEditableSamples();
    onEachPage([&] {
        for (const ShownColumns& row : page().shownColumns())
            for (const int column : row.columns) {
                // Names are changed by a command, and views are rows of a list.
                const Column& cell = *findTable(row.table)->column(column);
                EXPECT_TRUE(column == kNameColumn || cell.isSlot() ||
                            page().focusField({row.table, row.key.getKey()}, column))
                    << findTable(row.table)->name << ' ' << cell.name;
            }
    });
}

TEST_F(AllPages, EveryControlAndPictureHasANameAndEveryPageItsHelp) {
    makeEditableSamples();
    std::filesystem::path shownHelp;
    std::set<std::filesystem::path> topics;
    CKorHelp::setViewer([&](const std::filesystem::path& page, const KorString&) { shownHelp = page; });
    onEachPage([&] {
        page().findChild<KorLineEdit*>()->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F1);
        EXPECT_TRUE(topics.insert(shownHelp).second) << shownHelp << " is that of another page too";
        const std::filesystem::path german =
            shownHelp.parent_path().parent_path() / "de" / shownHelp.filename();
        EXPECT_TRUE(std::filesystem::exists(german)) << german;
        EXPECT_GT(expectNamed(page()), 0);
        if (page().templateId() == 2020) {
            EXPECT_EQ(accessibleName(control(1254)), QStringLiteral("Compass in the view"));
        }
    });
}

TEST_F(AllPages, WhatCannotBeChangedIsReadableInEveryPalette) {
    useSource(SourceId::standard());
    makeSamples({}, {});
    for (const QPalette& palette : desktopPalettes()) {
        m_window.setPalette(palette);
        onEachPage([&] {
            EXPECT_EQ(page().palette().color(QPalette::Window), palette.color(QPalette::Window));
            EXPECT_GT(expectReadable(page()), 0);
            for (const QLineEdit* field : page().findChildren<QLineEdit*>()) {
                EXPECT_EQ(field->palette().color(QPalette::Base), field->palette().color(QPalette::Window));
            }
        });
    }
}

} // namespace
