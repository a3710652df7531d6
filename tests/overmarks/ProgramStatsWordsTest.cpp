// SPDX-License-Identifier: GPL-3.0-only
// What counts as a word, in the scripts of the world.
#include "overmarks/StatsFixture.h"

namespace
{

struct Words
{
    const char* name;
    std::string text;
    int number;
};

class ProgramStatsWordsTest : public StatsTest, public testing::WithParamInterface<Words>
{
};

TEST_P (ProgramStatsWordsTest, areCounted)
{
    writeList ({ { "c1", "ANNA" } }, { { "c1", "1", 0, 25, GetParam().text } });
    EXPECT_EQ (stats()["total"]["words"], GetParam().number) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P (
    Latin, ProgramStatsWordsTest,
    testing::Values (
        Words { "nothing", "", 0 }, Words { "one", "Hello?", 1 }, Words { "several", "Who is there?", 3 },
        Words { "apostrophe", "Who's there? Don\u2019t!", 3 }, Words { "elision", "l'homme qu\u2019il", 2 },
        Words { "leadingApostrophe", "'Tis the boys' house", 4 }, Words { "rockAndRoll", "rock 'n' roll", 3 },
        Words { "quotes", "\u201eJa\u201c, 'said' he", 3 }, Words { "hyphens", "my mother-in-law", 2 },
        Words { "hardHyphen", "e\u2011mail", 1 }, Words { "dashes", "well - no \u2014 yes\u2014but", 4 },
        Words { "twoHyphens", "no--yes", 2 }, Words { "ellipsis", "wait...what \u2026 no", 3 },
        Words { "abbreviation", "the U.S.A. today", 3 }, Words { "numbers", "3.50 or 10,000 at 9:30", 5 },
        Words { "commaWithoutBlank", "yes,no:so", 3 }, Words { "slash", "and/or", 2 },
        Words { "brackets", "(laughs) No.", 2 }, Words { "punctuationAlone", " ... ?! -- ", 0 },
        Words { "accents", "T\u00fcr f\u00fchrt", 2 },
        Words { "composedAccents", "Tu\u0308r fu\u0308hrt", 2 },
        Words { "softHyphen", "Donau\u00addampf", 1 }, Words { "noBreakSpace", "a\u00a0b", 2 },
        Words { "catalanDot", "col\u00b7legi", 1 }, Words { "lowLine", "take_two", 1 },
        Words { "fullWidth", "\uff21\uff22 \uff23", 2 }),
    [] (const auto& words) { return words.param.name; });

INSTANTIATE_TEST_SUITE_P (NotSpoken, ProgramStatsWordsTest,
                          testing::Values (Words { "stars", "one**two ** three", 3 },
                                           Words { "lineBreaks", "one\ntwo\r\nthree", 3 },
                                           Words { "starsAlone", "**", 0 },
                                           Words { "notes", "\u266a la la \u266b", 2 },
                                           Words { "emoji", "\U0001f600 \u2764\ufe0f", 0 },
                                           Words { "emojiInText", "yes\U0001f600no", 2 }),
                          [] (const auto& words) { return words.param.name; });

INSTANTIATE_TEST_SUITE_P (
    Scripts, ProgramStatsWordsTest,
    testing::Values (Words { "russian", "Они ушли, кто-то там.", 4 }, Words { "greek", "Τι είπες;", 2 },
                     Words { "arabic", "لا أعرف", 2 }, Words { "arabicVowels", "كِتَابٌ جَدِيدٌ", 2 },
                     Words { "persianJoiner", "می\u200cخواهم", 1 }, Words { "hebrew", "צה\u05f4ל שלום", 2 },
                     Words { "hindi", "मैं नहीं जानता", 3 }, Words { "hindiConjunct", "क्या", 1 },
                     Words { "tamil", "நான் இல்லை", 2 }, Words { "thaiByBlanks", "ไม่รู้ ครับ", 2 },
                     Words { "thaiByMarks", "ไม่\u200bรู้", 2 }, Words { "korean", "안녕하세요 여러분", 2 },
                     Words { "koreanComposed", "\u1100\u1161\u11a8 \u1102\u1161", 2 },
                     Words { "vietnamese", "Tôi không biết", 3 }),
    [] (const auto& words) { return words.param.name; });

INSTANTIATE_TEST_SUITE_P (
    WithoutBlanks, ProgramStatsWordsTest,
    testing::Values (Words { "chinese", "你好，世界。", 4 },
                     Words { "chineseRare", "\U00020000\U0002a6d6", 2 },
                     Words { "japanese", "はい、そうです。", 6 }, Words { "longVowels", "コーヒー", 4 },
                     Words { "repetition", "人々", 2 }, Words { "halfWidthKana", "ｶﾞｯｺｳ", 4 },
                     Words { "composedKana", "か\u3099く", 2 }, Words { "withLatin", "OK、行くよABC", 5 },
                     Words { "withNumbers", "3時30分", 4 }),
    [] (const auto& words) { return words.param.name; });

} // namespace
