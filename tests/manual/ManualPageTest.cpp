#include "manual/ManualPage.h"

#include <gtest/gtest.h>

namespace {

ManualPage Sample() {
    ManualPage page;
    page.name = "tool";
    page.summary = "does things";
    page.version = "1.2";
    page.date = "2025-01-02";
    page.synopsis = {"tool --level N FILE"};
    page.sections.push_back({"OPTIONS", {}, {{"--level N", "a\\b path"}}});
    page.sections.push_back({"SEE ALSO", {".hidden 'quoted"}, {}, false});
    return page;
}

TEST(ManualPage, RoffEscapesWhatTroffWouldTakeAsMarkup) {
    const std::string roff = RenderRoff(Sample());
    EXPECT_EQ(roff.rfind(".TH TOOL 1 \"2025-01-02\" \"tool 1.2\" \"User Commands\"\n", 0), 0u);
    // Options are typed with minus signs, not hyphens; a backslash prints as one.
    EXPECT_NE(roff.find("\\fB\\-\\-level N\\fR\na\\eb path\n"), std::string::npos) << roff;
    // A line starting with a dot or quote would be a request.
    EXPECT_NE(roff.find("\n\\&.hidden 'quoted\n"), std::string::npos) << roff;
    EXPECT_NE(roff.find(".HP 4\ntool \\-\\-level N FILE\n"), std::string::npos) << roff;
}

TEST(ManualPage, HelpTextWrapsEveryWordAndLeavesOutManualOnlySections) {
    ManualPage page = Sample();
    std::string longText;
    for (int i = 0; i < 40; ++i) {
        longText += "word" + std::to_string(i) + " ";
    }
    page.sections[0].entries.push_back({"--long", longText});
    const std::string text = RenderHelpText(page, 40);
    EXPECT_EQ(
        text.rfind("Usage: tool --level N FILE\n\nDoes things.\n\nOptions:\n  --level N\n      a\\b path\n",
                   0),
        0u)
        << text;
    std::size_t start = 0;
    for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n', start)) {
        EXPECT_LE(end - start, 40u) << text.substr(start, end - start);
        start = end + 1;
    }
    for (int i = 0; i < 40; ++i) {
        const std::string word = "word" + std::to_string(i);
        EXPECT_TRUE(text.find(word + " ") != std::string::npos || text.find(word + "\n") != std::string::npos)
            << word;
    }
    EXPECT_EQ(text.find("hidden"), std::string::npos);
}

} // namespace
