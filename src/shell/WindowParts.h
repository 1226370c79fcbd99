#pragma once

#include "shell/ApplyState.h"
#include "shell/CommandStrip.h"
#include "shell/CompactCommand.h"
#include "shell/DeepCopyCommand.h"
#include "shell/DefinitionCommands.h"
#include "shell/DimensionSettingsCommand.h"
#include "shell/ExchangeCommands.h"
#include "shell/ItemMenu.h"
#include "shell/KorDSMUndoStrip.h"
#include "shell/LanguageMenu.h"
#include "shell/Navigation.h"
#include "shell/ReadAhead.h"
#include "shell/RecordMenu.h"
#include "shell/RecoveryOffer.h"
#include "shell/Reports.h"
#include "shell/SearchCommand.h"
#include "shell/SectionStrip.h"
#include "shell/SelectionStatus.h"
#include "shell/ServerWatch.h"
#include "shell/SourcesCommand.h"
#include "shell/StatusLine.h"
#include "shell/StylePreview.h"
#include "shell/UsageViews.h"
#include "shell/ViewCommands.h"
#include "shell/WindowLeaving.h"
#include "shell/WindowRefresh.h"

/// The parts of an editor window. Each knows only those before it, and says by signals what others may want
/// to know; the window connects them. They go in reverse order, before the window's controls.
struct WindowParts {
    /// `window` has its template already; `mayFollow` says whether it can show other data now.
    WindowParts(QWidget& window, KorDSMDataStructure& structure, KorImageListPtr images,
                std::function<bool()> mayFollow);

    QPushButton& apply;
    QPushButton& use;

    SectionViews sections;
    RightSide rightSide;
    NameFilter filter;
    TreeSelection selection;
    Navigation navigation;
    StylePreview preview;

    SectionStrip sectionStrip;
    CommandStrip commands;
    KorDSMUndoStrip& undo;
    StatusLine status;
    SelectionStatus selectionStatus;
    ApplyState applyState;

    WindowRefresh refresh;
    Reports reports;
    ServerWatch servers;
    ReadAhead ahead;
    RecoveryOffer recovery;
    WindowLeaving leaving;

    UsageViews usages;
    DefinitionCommands definitions;
    ViewCommands views;
    CompactCommand compaction;
    SourcesCommand sources;
    DimensionSettingsCommand dimensionSettings;
    ExchangeCommands exchange;
    DeepCopyCommand deepCopy;
    RecordMenu records;
    ItemMenu menu;
    LanguageMenu languages;
    SearchCommand search;
};
