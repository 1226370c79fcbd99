#include "shell/WindowParts.h"

#include "controls/KorButtonGroup.h"
#include "controls/KorButtonGroupMenu.h"
#include "controls/KorControls.h"
#include "controls/KorListCtrl.h"
#include "controls/KorTabCtrl.h"
#include "controls/KorVerticalSplitter.h"

#include <QLineEdit>
#include <QPushButton>

namespace {

template <typename T>
T& control(QWidget& window, int id) {
    return *KorControls::find<T>(&window, id);
}

} // namespace

WindowParts::WindowParts(QWidget& window, KorDSMDataStructure& structure, KorImageListPtr images,
                         std::function<bool()> mayFollow)
    : apply(control<QPushButton>(window, 3)), use(control<QPushButton>(window, 1098)),
      sections(window, structure, images),
      rightSide(control<KorTabCtrl>(window, 1002), control<KorListCtrl>(window, 1003), std::move(images)),
      filter(control<QLineEdit>(window, 1210), sections), selection(structure, sections, rightSide),
      navigation(structure, sections, filter, selection, rightSide, control<KorButtonGroup>(window, 1012)),
      preview(window, control<KorVerticalSplitter>(window, 1097), control<KorButtonGroup>(window, 1212),
              selection, navigation),
      sectionStrip(control<KorButtonGroupMenu>(window, 1233), structure),
      commands(control<KorButtonGroup>(window, 1011)),
      undo(*new KorDSMUndoStrip(&control<KorButtonGroup>(window, 1211))), // its buttons own it
      status(window), selectionStatus(sections, filter, selection, navigation, commands, use, status),
      applyState(structure, apply, undo, rightSide),
      refresh(structure, sections, filter, selection, navigation, applyState, rightSide),
      reports(window, status, applyState, refresh), servers(reports, status, std::move(mayFollow)),
      ahead(window),
      recovery(window, [this](const KorDSMCommit::Read& read) { return reports.follow(read); }),
      leaving(window, structure, selection, applyState, reports), usages(window, structure, navigation),
      definitions(window, structure, selection, rightSide, refresh, usages, commands),
      views(window, sections, navigation, refresh), compaction(window, applyState),
      sources(window, refresh, reports, servers), dimensionSettings(window, selection, rightSide, commands),
      exchange(window, structure, selection, refresh, commands),
      deepCopy(window, structure, selection, refresh, commands),
      records(window, structure, selection, refresh, usages),
      menu(window, sections, rightSide, selection, commands, undo),
      languages(*control<KorButtonGroupMenu>(window, 1233).checkMenu(), status),
      search(window, structure, navigation, rightSide, selection, menu,
             control<KorButtonGroupMenu>(window, 1233), control<KorButtonGroup>(window, 1012)) {
    menu.add([this](QMenu& into, KorDSMDatabaseItem& item) { records.addTo(into, item); });
    menu.add([this](QMenu& into, KorDSMDatabaseItem& item) { views.addTo(into, item); });
    menu.add([this](QMenu& into, KorDSMDatabaseItem& item) { deepCopy.addTo(into, item); });
    menu.add([this](QMenu& into, KorDSMDatabaseItem& item) { dimensionSettings.addTo(into, item); });
    menu.add([this](QMenu& into, KorDSMDatabaseItem& item) { compaction.addTo(into, item); });
    menu.add([this](QMenu& into, KorDSMDatabaseItem& item) { sources.addTo(into, item); });
    menu.add([this](QMenu& into, KorDSMDatabaseItem& item) { usages.addTo(into, item); });
}
