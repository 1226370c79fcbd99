#pragma once

#include "base/EditorSession.h"
#include "services/KorHostReport.h"
#include "services/KorResources.h"
#include "services/Prompts.h"
#include "support/Mentions.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

/// A test with a session and a folder of its own, the program's own texts in English, and an empty report.
class ServicesTest : public testing::Test {
protected:
    void SetUp() override {
        KorResources::setFolder(std::filesystem::path(SOURCE_DIR) / "resources");
        Prompts::load(KorResources::folder() / "prompts", "en");
        KorHostReport::take();
    }

    /// The one sentence reported since the last look; fails when there is another number of them.
    std::string onlySentence() {
        const std::vector<KorString> sentences = KorHostReport::take();
        EXPECT_EQ(sentences.size(), 1u);
        return sentences.empty() ? std::string() : sentences.front().toStdString();
    }

    EditorSession m_session;
    TempFolder m_folder;
};
