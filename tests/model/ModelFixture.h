#pragma once

#include "base/KorAssert.h"
#include "data/StyleFixture.h"
#include "model/KorDSMDataStructure.h"
#include "model/KorDSMMessages.h"
#include "model/KorDSMSectionLoader.h"
#include "operations/KorOdbcGUI.h"
#include "services/KOSettings.h"
#include "services/Prompts.h"

/// A Standard and a User database and a data structure of the test's own, with a message target in the place
/// of the window that records what items ask of it.
class ModelFixture : public StyleFixture, public KorMessageTarget {
protected:
    void SetUp() override {
        ASSERT_TRUE(Prompts::load(SOURCE_DIR "/resources/prompts", "en"));
        KOSettings::getInstance().useFile(m_folder.path() / "settings.ini");
        StyleFixture::SetUp();
        structure = std::make_unique<KorDSMDataStructure>();
        KorDSMMainWindow::add(this);
    }
    void TearDown() override {
        KorDSMMainWindow::remove(this);
        structure.reset();
    }

    void onMessage(const KorMessage& message) override {
        numbers.push_back(message.number);
        if (message.number == DsmSetEntryText::kNumber)
            texts.push_back(static_cast<const DsmSetEntryText&>(message).text);
        if (message.number == DsmProgress::kNumber)
            progress.push_back(static_cast<const DsmProgress&>(message).state);
    }

    void load() { KorDSMSectionLoader().loadDataStructure(*structure); }
    /// The User content of a section.
    KorDSMDatabaseItem& userContent(KorDSMDefines::eViewSections section) {
        return *structure->getSection(section)->children()[1]->children()[0];
    }
    static std::vector<KorString> namesBelow(const KorDSMDatabaseItem& item) {
        std::vector<KorString> names;
        for (const KorDSMDatabaseItem* child : item.children())
            names.push_back(child->getDisplayName());
        return names;
    }

    std::unique_ptr<KorDSMDataStructure> structure;
    std::vector<int> numbers; ///< of the messages, in their order
    std::vector<KorString> texts;
    std::vector<DsmProgress::eState> progress;
};

using Names = std::vector<KorString>;
