#include "services/CKorHelp.h"

#include "base/EditorSession.h"
#include "services/KorHostReport.h"
#include "services/KorResources.h"
#include "services/Prompts.h"

#include <utility>

namespace fs = std::filesystem;

namespace {
constexpr int kPageMissing = 8;

struct HelpViewer {
    CKorHelp::Viewer show;
};
} // namespace

void CKorHelp::setViewer(Viewer viewer) {
    EditorSession::currentPart<HelpViewer>().show = std::move(viewer);
}

fs::path CKorHelp::pageOf(const KorString& topic) {
    std::error_code ignored;
    for (const std::string& language : {Prompts::language(), std::string("en")}) {
        fs::path page = KorResources::folder() / "help" / language / (topic.toStdString() + ".html");
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
    if (const Viewer& show = EditorSession::currentPart<HelpViewer>().show)
        show(page);
    return true;
}
