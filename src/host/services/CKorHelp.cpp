#include "services/CKorHelp.h"

#include "services/KorHostReport.h"
#include "services/KorResources.h"
#include "services/Prompts.h"

#include <utility>

namespace fs = std::filesystem;

namespace {
constexpr int kPageMissing = 8;

CKorHelp::Viewer g_viewer;
} // namespace

void CKorHelp::setViewer(Viewer viewer) {
    g_viewer = std::move(viewer);
}

fs::path CKorHelp::pageOf(const KorString& topic) {
    std::error_code ignored;
    for (const std::string& language : {Prompts::language(), std::string("en")}) {
        const fs::path page = KorResources::folder() / "help" / language / (topic.toStdString() + ".html");
        if (fs::exists(page, ignored))
            return page;
    }
    return {};
}

bool CKorHelp::showTopic(const KorString& topic) {
    const fs::path page = pageOf(topic);
    if (page.empty()) {
        KorHostReport::add(kPageMissing, topic, (KorResources::folder() / "help").string());
        return false;
    }
    if (g_viewer)
        g_viewer(page);
    return true;
}
