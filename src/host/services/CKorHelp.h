#pragma once

#include "base/KorString.h"

#include <filesystem>
#include <functional>

/// The host's help: one page per topic, in the language of the program where it is translated.
class CKorHelp {
public:
    using Viewer = std::function<void(const std::filesystem::path& page)>;

    /// Sets who shows a page.
    static void setViewer(Viewer viewer);
    /// Shows a topic. A topic without a page is reported. Returns whether there is one.
    static bool showTopic(const KorString& topic);
    /// The topic's page; empty when there is none.
    static std::filesystem::path pageOf(const KorString& topic);
};
