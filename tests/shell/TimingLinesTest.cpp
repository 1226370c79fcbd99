#include "services/KorOutputDebugString.h"
#include "shell/EditorFixture.h"

#include <regex>

TEST_F(EditorFixture, TheSetUpWritesItsTwoTimingLines) {
    std::vector<std::string> lines;
    setDebugOutputSink([&](const KorString& text) { lines.push_back(text.toStdString()); });
    open();
    setDebugOutputSink({});
    ASSERT_EQ(lines.size(), 2U);
    int line = 0;
    for (const char* label :
         {"KorDSMMainDialog::createPages lasted: ", "KorDSMMainDialog::OnInitDialog lasted: "}) {
        std::string expected = label;
        expected.resize(50, ' ');
        const std::string& written = lines[static_cast<std::size_t>(line++)];
        EXPECT_TRUE(std::regex_match(written, std::regex("\n" + expected + "(0|[1-9][0-9]*) ms"))) << written;
    }
}
