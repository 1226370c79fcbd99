#pragma once

#include "base/KorString.h"

#include <filesystem>
#include <functional>
#include <vector>

/// The host's help: one page per topic, in the language of the program where it is translated.
class CKorHelp {
public:
    /// `place` is the name of a place in the page; empty for its begin.
    using Viewer = std::function<void(const std::filesystem::path& page, const KorString& place)>;

    /// Sets who shows a page.
    static void setViewer(Viewer viewer);
    /// Shows a topic, or a place of it, which is named behind a "#". A topic without a page is reported.
    /// Returns whether there is one.
    static bool showTopic(const KorString& topic);
    struct Topic {
        KorString name;
        KorString title;
        std::vector<KorString> others; ///< its title in other languages, and the headings in all
    };
    /// All topics, by their names.
    static std::vector<Topic> topics();
    /// The topic's page; empty when there is none.
    static std::filesystem::path pageOf(const KorString& topic);
};
