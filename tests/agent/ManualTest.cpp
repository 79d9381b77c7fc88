// The writers of --help and of the manual page.
#include "manual/Manual.h"

#include <gtest/gtest.h>

namespace {

manual::Manual sample()
{
    const manual::Section options{
        "Options",
        {{"--port PORT", "port of the service\n(the variable \"P\")"},
         {"--a-very-long-option-name", "the text of a long option begins on a line of its own and is broken "
                                       "at the last space within one hundred columns"}}};
    return {"sample",  "do one thing", {"[options] METHOD", "--list"}, "Does it. It isn't\nmore.",
            {options}, {"one", "two"}};
}

TEST(Manual, HelpText_HasOneColumnOfTextsAndAtMost100Columns)
{
    EXPECT_EQ(
        manual::helpText(sample()),
        "usage: sample [options] METHOD\n"
        "       sample --list\n"
        "\n"
        "Does it. It isn't more.\n"
        "\n"
        "Options:\n"
        "  --port PORT         port of the service (the variable \"P\")\n"
        "  --a-very-long-option-name\n"
        "                      the text of a long option begins on a line of its own and is broken at the\n"
        "                      last space within one hundred columns\n");
}

TEST(Manual, ManualPage_EscapesHyphensQuotesAndRequests)
{
    manual::Manual page = sample();
    page.sections = {{"Options", {{"--all \"x\"", ".B is \\not a request"}}}};
    EXPECT_EQ(manual::manualPage(page, "1.2"), ".TH \"SAMPLE\" 1 \"\" \"sample 1.2\" \"User Commands\"\n"
                                               ".SH NAME\n"
                                               "sample \\- do one thing\n"
                                               ".SH SYNOPSIS\n"
                                               ".B sample\n"
                                               "[options] METHOD\n"
                                               ".br\n"
                                               ".B sample\n"
                                               "\\-\\-list\n"
                                               ".SH DESCRIPTION\n"
                                               "Does it. It isn\\(aqt more.\n"
                                               ".SH \"OPTIONS\"\n"
                                               ".TP\n"
                                               ".B \"\\-\\-all \\(dqx\\(dq\"\n"
                                               "\\&.B is \\enot a request\n"
                                               ".SH SEE ALSO\n"
                                               ".BR one (1) ,\n"
                                               ".BR two (1)\n");
}

} // namespace
