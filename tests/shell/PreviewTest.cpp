#include "shell/EditorFixture.h"

#include "controls/KorLineEdit.h"
#include "controls/KorMFCGridCtrl.h"
#include "drawing/Governed.h"
#include "records/TableDeclarations.h"
#include "session/KorDSMDrawingDifferences.h"
#include "session/KorDSMPreview.h"
#include "session/KorDSMPreviewSubject.h"
#include "session/KorDSMProvenanceWords.h"
#include "session/KorDSMUndo.h"
#include "shell/PreviewPane.h"

#include <QClipboard>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QNativeGestureEvent>
#include <QSlider>
#include <QSplitter>
#include <QTabBar>
#include <QTimer>
#include <QWheelEvent>

namespace {

// What stands beside the pages.
class Preview : public EditorFixture {
protected:
    Preview() {
        open();
        KorDSMDialogFactory::getDSMDataStructure().setShowWarning(false);
        m_dialog->resize(1700, 900);
    }

    void showPreview(const Path& path) {
        select(path);
        press(Qt::Key_F9);
        settle();
    }
    static void settle() {
        QApplication::processEvents();
        QApplication::processEvents();
    }
    PreviewPane& pane() { return *m_dialog->findChild<PreviewPane*>(); }
    PreviewView& view() { return pane().view(); }
    Drawing drawn() {
        settle();
        return view().drawing() ? *view().drawing() : Drawing();
    }
    static bool isEqual(const Drawing& a, const Drawing& b) {
        const auto first = a.all();
        const auto second = b.all();
        return std::ranges::equal(first, second,
                                  [](const Primitive* x, const Primitive* y) { return *x == *y; });
    }
    std::optional<FieldPlace> focused() {
        const QWidget* focus = QApplication::focusWidget();
        const auto* shown = KorDSMPage::currentPage();
        return shown && focus && shown->isAncestorOf(focus) ? shown->fieldAt(*focus) : std::nullopt;
    }
    PreviewView::Places governed(const FieldPlace& field) {
        return Governed(*view().drawing())
            .by(*StyleDatabases::current().source(SourceId::user()), field.row, field.column);
    }
};

} // namespace

TEST_F(Preview, DrawsNothingWhileItIsHidden) {
    select(kStyle);
    settle();
    EXPECT_EQ(view().drawing(), nullptr);
    press(Qt::Key_F9);
    EXPECT_FALSE(drawn().all().empty());
    press(Qt::Key_F9);
    EXPECT_EQ(view().drawing(), nullptr);
    changePosition();
    settle();
    EXPECT_EQ(view().drawing(), nullptr);

    // How it was left is remembered.
    press(Qt::Key_F9);
    auto& splitter = *qobject_cast<QSplitter*>(pane().parentWidget());
    splitter.setSizes({400, 900});
    Q_EMIT splitter.splitterMoved(400, 1);
    close();
    open();
    EXPECT_TRUE(pane().isVisible());

    // On a smaller screen the pages keep their room.
    m_dialog->resize(1000, 700);
    press(Qt::Key_F9);
    press(Qt::Key_F9);
    settle();
    const QList<int> sizes = qobject_cast<QSplitter*>(pane().parentWidget())->sizes();
    EXPECT_GE(sizes[0] + 1, sizes[1]);
}

TEST_F(Preview, ZoomsAboutThePointerByWheelAndPinching) {
    showPreview(kStyle);
    drawn();
    const QPointF pointer(70, 50);
    const auto under = [&] { // the pointer, on the sheet
        const QPointF zero = view().toView({});
        return Vec2{(pointer.x() - zero.x()) / view().scale(), (zero.y() - pointer.y()) / view().scale()};
    };
    const Vec2 held = under();
    const auto zoomed = [&](QEvent& event, double factor) {
        const double before = view().scale();
        QApplication::sendEvent(&view(), &event);
        EXPECT_NEAR(view().scale(), before * factor, 1e-9);
        EXPECT_LT((under() - held).length(), 1e-6);
    };
    const QPointF global = view().mapToGlobal(pointer);
    QWheelEvent wheel(pointer, global, {}, {0, 240}, {}, {}, Qt::NoScrollPhase, false);
    zoomed(wheel, 1.25 * 1.25);
    QNativeGestureEvent pinch(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2, pointer,
                              pointer, global, -0.5, {});
    zoomed(pinch, 0.5);
    EXPECT_FALSE(view().isFitted());
    QTest::keyClick(&view(), Qt::Key_1);
    EXPECT_NEAR(view().scale(), view().logicalDpiX() / 25.4, 1e-9);
    QTest::keyClick(&view(), Qt::Key_0);
    EXPECT_TRUE(view().isFitted());
}

TEST_F(Preview, LooksAtThePartsOfOtherStylesAheadButNotWhileItIsHidden) {
    showPreview(kStyle);
    settle();
    auto& parts = KorDSMPreview::shown()->parts();
    const auto projections = [&] {
        int all = 0;
        for (const auto& entry : parts.all())
            all += entry.seen->projections();
        return all;
    };
    auto& pause = *m_dialog->findChild<QTimer*>("lookAhead");
    while (pause.isActive())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    const int ahead = projections();
    select({"User", "Hallberg: railings", "HB railing, workshop"});
    settle();
    EXPECT_FALSE(drawn().all().empty());
    EXPECT_EQ(projections(), ahead) << "nothing is left to be projected";
    press(Qt::Key_F9);
    EXPECT_FALSE(pause.isActive());
}

TEST_F(Preview, FollowsAChangeAndItsUndoAndWritesNothingItself) {
    showPreview(kStyle);
    const Drawing before = drawn();
    ASSERT_FALSE(before.all().empty());
    EXPECT_EQ(KorDSMUndo::stepCount(), 0u);
    changePosition();
    EXPECT_FALSE(isEqual(drawn(), before));
    EXPECT_EQ(KorDSMUndo::stepCount(), 1u);

    // The stored drawing can be looked at meanwhile.
    Q_EMIT pane().toolPressed(PreviewPane::kBefore);
    EXPECT_TRUE(isEqual(drawn(), before));
    EXPECT_EQ(KorDSMUndo::stepCount(), 1u);
    Q_EMIT pane().toolPressed(PreviewPane::kBefore);
    EXPECT_FALSE(isEqual(drawn(), before));

    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(isEqual(drawn(), before));
    EXPECT_FALSE(isPending());

    // What is stored meanwhile is what is shown, without a comparison.
    changePosition();
    Q_EMIT pane().toolPressed(PreviewPane::kBefore);
    EXPECT_TRUE(isEqual(drawn(), before));
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_FALSE(isPending());
    EXPECT_FALSE(isEqual(drawn(), before));
}

TEST_F(Preview, ASliderAndALineInThePictureBringWhatIsStoredOverFromTheLeft) {
    showPreview(kStyle);
    auto* slider = pane().findChild<QSlider*>();
    EXPECT_FALSE(slider->isVisible()) << "nothing is pending";
    changePosition();
    settle();
    view().zoomBy(0.9); // so that it stays where it is
    const auto picture = [&](double from, double to) {
        settle();
        const QImage all = view().grab().toImage();
        return all.copy(static_cast<int>(all.width() * from), 2, static_cast<int>(all.width() * (to - from)),
                        all.height() - 4);
    };
    const auto words = [this] {
        QStringList all;
        for (const QLabel* label : pane().findChildren<QLabel*>())
            all << label->text();
        return all;
    };
    const QStringList before = words();
    slider->setValue(50);
    EXPECT_NE(words(), before);
    slider->setValue(0);
    EXPECT_EQ(words(), before);
    slider->setValue(1); // with the words below, which need room
    const QImage nowLeft = picture(0.02, 0.48);
    const QImage nowRight = picture(0.52, 0.98);
    press(Qt::Key_F9, Qt::ShiftModifier);
    const QImage storedLeft = picture(0.02, 0.48);
    EXPECT_NE(storedLeft, nowLeft);
    slider->setValue(50);
    EXPECT_EQ(picture(0.02, 0.48), storedLeft);
    EXPECT_EQ(picture(0.52, 0.98), nowRight);
    QTest::mousePress(&view(), Qt::LeftButton, {}, {view().width() / 2, 50});
    QTest::mouseMove(&view(), {view().width() / 4, 50});
    QTest::mouseRelease(&view(), Qt::LeftButton, {}, {view().width() / 4, 50});
    EXPECT_NEAR(slider->value(), 25, 1);
    press(Qt::Key_Z, Qt::ControlModifier);
    settle();
    EXPECT_FALSE(slider->isVisible());
    EXPECT_EQ(slider->value(), 0);
}

TEST_F(Preview, CountsATitleOfSeveralLinesOnceWhereItSaysWhatBecameDifferent) {
    Drawing before;
    ViewPicture& front = before.views.emplace_back();
    front.key = 1;
    front.name = "Front";
    const auto title = std::make_shared<const Provenance>();
    for (const char* line : {"Post", "1:15"}) {
        Primitive& text = front.primitives.emplace_back();
        text.kind = Primitive::kText;
        text.purpose = Primitive::kTitle;
        text.points = {{0, 0}};
        text.text = line;
        text.provenance = title;
    }
    Drawing after = before;
    after.views[0].primitives[1].text = "1:10";
    const auto changed = KorDSMDrawingDifferences::wordsOf(before, after);
    ASSERT_EQ(changed.size(), 1u);
    EXPECT_EQ(changed[0].view(), "Front – titles: 1 look different");
    after.views[0].primitives.clear();
    const auto went = KorDSMDrawingDifferences::wordsOf(before, after);
    ASSERT_EQ(went.size(), 1u);
    EXPECT_EQ(went[0].view(), "Front – titles: 1 went");
}

TEST_F(Preview, ShowsWhatIsTypedAfterAPauseWithoutWritingIt) {
    showPreview(kStyle);
    showTab(0);
    const Drawing before = drawn();
    const auto* style = static_cast<const StructDetailStyle*>(
        m_databases->source(SourceId::user())->table(kTableDetailStyle).find("HB post 1:15"));
    const RowRef arrangement{kTableViewArrangeStrategy, style->arrangeStrategyKey};
    KorLineEdit* margin = nullptr;
    const Column* column = findTable(arrangement.table)->column("frame_margin");
    ASSERT_NE(column, nullptr);
    ASSERT_TRUE(KorDSMPage::currentPage()->focusField(arrangement, column->number));
    margin = qobject_cast<KorLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(margin, nullptr);
    EXPECT_EQ(focused()->column, column->number);

    margin->selectAll();
    QTest::keyClicks(margin, "50");
    EXPECT_TRUE(isEqual(drawn(), before)) << "while keys come nothing between is shown";
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isEqual(drawn(), before); }));
    EXPECT_FALSE(isPending());
    const Drawing typed = drawn();
    QTest::keyClick(margin, Qt::Key_Return);
    EXPECT_TRUE(isEqual(drawn(), typed)) << "what was shown is what is written";
    EXPECT_EQ(KorDSMUndo::stepCount(), 1u);
}

TEST_F(Preview, MarksWhatTheFocusedFieldGoverns) {
    showPreview(kView);
    int marks = 0;
    int silent = 0;
    for (int tab = 0; tab < 3; ++tab) {
        showTab(tab);
        for (int step = 0; step < 60; ++step) {
            press(Qt::Key_Tab);
            const auto field = focused();
            if (!field)
                continue;
            EXPECT_EQ(view().marked(), governed(*field))
                << findTable(field->row.table)->name << " " << field->column;
            view().marked().empty() ? ++silent : ++marks;
        }
    }
    EXPECT_GT(marks, 3);
    EXPECT_GT(silent, 0);
}

TEST_F(Preview, OffersThePartThatSuitsTheStyleWhereTheChosenOneHasNothing) {
    showPreview({"User", "Hallberg: posts and beams", "HB beam 1:15"});
    KorDSMPreview& preview = *KorDSMPreview::shown();
    preview.choosePart("purlin");
    preview.update(KorDSMSectionTree::itemOf(tree().selectedItem()), {});
    const RowRef fitted = {kTableAppearance, StyleDatabases::current()
                                                 .source(SourceId::user())
                                                 ->table(kTableAppearance)
                                                 .find("HB fitted part")
                                                 ->key};
    const int weight = findTable(kTableAppearance)->column("line_weight")->number;
    EXPECT_TRUE(preview.governedBy(fitted, weight).empty());
    EXPECT_EQ(preview.partThatShows(fitted, weight), "beam");
}

TEST_F(Preview, LeadsFromALineToTheFieldThatMadeItSo) {
    showPreview(kStyle);
    // The line of an edge that nothing covers, and where it is alone.
    std::optional<std::size_t> place;
    QPoint position;
    const auto all = view().drawing()->all();
    for (std::size_t i = 0; i < all.size() && !place; ++i) {
        if (all[i]->purpose != Primitive::kVisibleEdge || all[i]->kind != Primitive::kLine)
            continue;
        position = view().toView((all[i]->points[0] + all[i]->points[1]) * 0.5).toPoint();
        if (view().placeAt(position) == i)
            place = i;
    }
    ASSERT_TRUE(place);
    const ProvenanceStep nearest = all[*place]->provenance->front();
    ASSERT_EQ(nearest.row.table, kTableAppearance);
    auto* list = pane().findChild<QListWidget*>();

    // A double click needs no list, which would take the drawing away from under its second half.
    QTest::mouseClick(&view(), Qt::LeftButton, {}, position);
    EXPECT_FALSE(list->isVisible());
    QTest::mouseDClick(&view(), Qt::LeftButton, {}, position);
    settle();
    EXPECT_FALSE(list->isVisible());
    ASSERT_TRUE(focused());
    EXPECT_EQ(focused()->row, nearest.row);
    EXPECT_EQ(focused()->column, nearest.columns.front());
    select(kStyle);
    settle();
    ASSERT_EQ(view().placeAt(position), place);

    QTest::mouseClick(&view(), Qt::LeftButton, {}, position);
    while (view().findChild<QTimer*>("singleClick")->isActive())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    ASSERT_TRUE(list->isVisible());
    EXPECT_EQ(list->count(), static_cast<int>(all[*place]->provenance->size()));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(0)).center());
    settle();
    ASSERT_TRUE(focused());
    EXPECT_EQ(focused()->row, nearest.row);
    EXPECT_EQ(focused()->column, nearest.columns.front());
    EXPECT_EQ(view().marked(), governed(*focused()));
    EXPECT_FALSE(view().isFitted()) << "the record is looked at where it acts";

    // The order of an entry has no field on its page, what else made the line so has one.
    const ProvenanceStep entry = view().drawing()->all()[*place]->provenance->at(1);
    ASSERT_EQ(entry.row.table, kTableReprMapEntry);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(1)).center());
    settle();
    ASSERT_TRUE(focused());
    EXPECT_EQ(focused()->row, entry.row);
    EXPECT_TRUE(std::ranges::count(entry.columns, focused()->column) == 1);

    // A page that is lower than its fields is scrolled to the one.
    m_dialog->resize(1700, 460);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(2)).center());
    settle();
    ASSERT_TRUE(focused());
    EXPECT_EQ(focused()->row.table, kTableReprMap);
    const QWidget* field = QApplication::focusWidget();
    EXPECT_EQ(field->visibleRegion().boundingRect(), field->rect());
}

TEST_F(Preview, CountsWhatTheEntriesOfAMapTakeAndLeavesOneOutOnTrialOnly) {
    showPreview({"User", "Hallberg: posts and beams", "HB post 1:15", "HB front", "HB workshop"});
    auto* grid = page()->findChild<KorMFCGridCtrl*>();
    const int takes = grid->columnCount() - 2;
    ASSERT_FALSE(grid->isColumnHidden(takes));
    const Drawing whole = drawn();
    grid->setFocus();
    grid->setCurrentCell(2, takes); // the holes
    settle();
    const int count = std::stoi("0" + grid->getCellText(2, takes).toStdString());
    std::set<int> marked;
    for (const std::size_t place : view().marked())
        marked.insert(whole.all()[place]->object);
    EXPECT_FALSE(marked.empty());
    EXPECT_LE(std::ssize(marked), count) << "of those that are taken some may be out of sight";

    KorDSMPreview& preview = *KorDSMPreview::shown();
    ASSERT_TRUE(focused());
    const std::int32_t holes = focused()->row.key;
    preview.leaveOut(holes, true);
    EXPECT_FALSE(isEqual(drawn(), whole));
    EXPECT_TRUE(isEqual(*preview.drawStored(), drawn())) << "nothing is pending";
    const std::string caption = preview.pageOf(false, false)->primitives.back().text;
    EXPECT_TRUE(caption.starts_with("On trial without 1 entry of \"HB workshop\". Schematic")) << caption;
    EXPECT_FALSE(isPending());
    preview.leaveOut(holes, false);
    EXPECT_TRUE(isEqual(drawn(), whole));
    KorDSMDialogFactory::getDSMDataStructure().setShowWarning(false);
    grid->setCurrentCell(0, 0);
    QTest::keyClick(grid, Qt::Key_Insert);
    settle();
    EXPECT_EQ(grid->getCellText(1, takes).toStdString(), "No set chosen") << "no bare 0";
    press(Qt::Key_Z, Qt::ControlModifier);
    settle();
    press(Qt::Key_F9);
    EXPECT_TRUE(grid->isColumnHidden(takes));
}

TEST_F(Preview, LeavesSeveralEntriesOutOnTrialAndSaysSoUntilTheirMapIsLeft) {
    showPreview({"User", "Hallberg: posts and beams", "HB post 1:15", "HB front", "HB workshop"});
    const Drawing whole = drawn();
    auto* grid = page()->findChild<KorMFCGridCtrl*>();
    grid->setFocus();
    grid->selectRows({1, 2});
    chooseInMenu("Leave out on trial");
    Q_EMIT grid->customContextMenuRequested(grid->visualItemRect(grid->item(2, 1)).center());
    settle();
    const auto isTold = [this] {
        return std::ranges::any_of(pane().findChildren<QLabel*>(), [](const QLabel* label) {
            return label->text().startsWith(QStringLiteral("On trial without 2 entries of \"HB workshop\"."));
        });
    };
    EXPECT_TRUE(isTold());
    EXPECT_FALSE(isEqual(drawn(), whole));

    // What no entry fits is not left without a reason.
    KorDSMPreview& preview = *KorDSMPreview::shown();
    const RowRef map = {kTableReprMap, KorDSMSectionTree::itemOf(tree().selectedItem())->recordKey()};
    ASSERT_TRUE(m_databases->setCell(map.table, KorOdbcKey(map.key), 3, std::int64_t{0}).isStored());
    preview.update(KorDSMSectionTree::itemOf(tree().selectedItem()), {});
    const Drawing plain = *preview.drawing();
    const auto all = plain.all();
    const auto rest = std::ranges::find_if(all, [&](const Primitive* each) {
        return each->object >= 0 && each->provenance && each->provenance->front().row == map;
    });
    ASSERT_NE(rest, all.end());
    const KorDSMPreview::Reason last =
        preview.reasonsFor(static_cast<std::size_t>(rest - all.begin())).back();
    EXPECT_TRUE(last.decides && last.row == map);
    EXPECT_EQ(last.text.view(), "Everything else: is drawn as usual");
    EXPECT_TRUE(KorDSMProvenanceWords::sentenceOf((*rest)->provenance->front())
                    .view()
                    .ends_with(": Everything else"));
    ASSERT_TRUE(m_databases->setCell(map.table, KorOdbcKey(map.key), 3, std::int64_t{1}).isStored());
    select(kView);
    settle();
    EXPECT_FALSE(isTold());
    EXPECT_TRUE(isEqual(drawn(), whole));
}

TEST_F(Preview, CountsForWhichObjectsEachQualifierOfASetHolds) {
    showPreview(kStyle);
    const auto* set = StyleDatabases::current()
                          .source(SourceId::user())
                          ->table(kTableQualifierSet)
                          .find(KorString("HB holes"));
    ASSERT_NE(set, nullptr);
    DsmGoToRecord place;
    place.source = SourceId::user();
    place.row = {kTableQualifierSet, set->key};
    KorDSMMainWindow::sendMessage(place);
    settle();
    auto* grid = page()->findChild<KorMFCGridCtrl*>();
    const int holds = grid->columnCount() - 1;
    ASSERT_FALSE(grid->isColumnHidden(holds));
    grid->setFocus();
    grid->setCurrentCell(0, holds);
    settle();
    ASSERT_TRUE(focused());
    EXPECT_EQ(grid->getCellText(0, holds), KorString::number(focused()->objects.size()));
    EXPECT_FALSE(focused()->objects.empty());
    EXPECT_FALSE(view().marked().empty());
}

TEST_F(Preview, SavesCopiesAndPrintsWhatItShows) {
    showPreview(kStyle);
    settle();
    const QList<QAction*> output = pane().findChild<QMenu*>()->actions();
    const auto saved = [&](bool isSheet, const std::string& name) {
        answerNext([&](QWidget* dialog) { nameFile(dialog, path(name)); });
        output[isSheet]->trigger();
        return m_folder.read(m_data + "/" + name + (name.find(".s") == name.npos ? ".pdf" : ""));
    };
    const std::string drawing = saved(false, "a.svg");
    EXPECT_NE(drawing.find("<svg"), drawing.npos);
    EXPECT_GT(saved(true, "b.svg").size(), drawing.size());
    EXPECT_EQ(saved(false, "post 1.15").substr(0, 4), "%PDF") << "what was typed has no ending of its own";
    m_dialog->activateWindow(); // offscreen a closed dialog does not hand it back
    view().setFocus();
    QTest::keyClick(&view(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_GT(QApplication::clipboard()->image().width(), 500);
    answerNext([&](QWidget* dialog) {
        dialog->findChild<QLineEdit*>("filename")->setText(QString::fromStdString(path("printed.pdf")));
        QMetaObject::invokeMethod(dialog, "accept");
    });
    press(Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(m_folder.read(m_data + "/printed.pdf").substr(0, 4), "%PDF");
}

TEST_F(Preview, OnASheetHeadingsStandAboveWhatTheyHeadAndSentencesInOneColumn) {
    showPreview({"User", "Hallberg: posts and beams", "HB beam 1:15"});
    settle();
    const KorDSMPreview& preview = *KorDSMPreview::shown();
    const Primitives texts = preview.pageOf(false, true)->primitives;
    int headings = 0;
    int columns = 1;
    for (std::size_t i = preview.pageOf(false, false)->primitives.size(); i + 1 < texts.size(); ++i) {
        const bool isBelow = texts[i + 1].points[0].v < texts[i].points[0].v;
        columns += !isBelow;
        headings += texts[i].style.bold;
        EXPECT_TRUE(isBelow || !texts[i].style.bold) << texts[i].text;
        EXPECT_TRUE(isBelow || std::isdigit(texts[i + 1].text[0]) || std::isupper(texts[i + 1].text[0]))
            << texts[i + 1].text;
    }
    EXPECT_GT(headings, 2);
    EXPECT_GT(columns, 1);
}

TEST_F(Preview, SaysWhyNothingIsDrawnAndKeepsItsSizeWhateverItSays) {
    showPreview(kStyle);
    const int height = view().height();
    pane().setNote(QStringLiteral("Names are in no drawing."));
    settle();
    EXPECT_EQ(view().height(), height);
    pane().setNote({});
    answerNext([](QWidget* modal) { typeName(modal, "HB post 1:20"); });
    command(kCopy);
    settle();
    // It is told beside the drawing, and in the part of the picture where it is missing.
    const auto isTold = [this](const QString& sentence) {
        return std::ranges::any_of(pane().findChildren<QLabel*>(),
                                   [&](const QLabel* label) { return label->text().startsWith(sentence); });
    };
    const QString why = QStringLiteral("This detail style is not stored yet.");
    EXPECT_FALSE(isTold(why));
    pane().findChild<QSlider*>()->setValue(50);
    EXPECT_TRUE(isTold(why));
    const QImage all = view().grab().toImage();
    std::set<QRgb> colors;
    for (int x = 2; x < all.width() / 2 - 5; ++x)
        for (int y = 2; y < all.height() - 2; ++y)
            colors.insert(all.pixel(x, y));
    EXPECT_GT(colors.size(), 1u);
    select({"User", "Hallberg: posts and beams"});
    EXPECT_EQ(KorDSMPreviewSubject::of(KorDSMSectionTree::itemOf(tree().selectedItem())).why,
              "Select a style, or something that styles use.");
}
