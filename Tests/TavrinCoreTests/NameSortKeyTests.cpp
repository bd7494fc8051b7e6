#include "TavrinCore/Scanning/Collation.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tavrin {
namespace {

TEST(NameSortKey, ordersAsComparingNamesDoes) {
    const std::vector<std::string> names{"",        "a",
                                         "A",       "á",
                                         "b",       "Banana",
                                         "apple",   "n",
                                         "ñ",       "nz",
                                         "o",       "10",
                                         "9",       "_x",
                                         ".y",      "file 2",
                                         "file 10", "ÿ",
                                         "\xFF",    "a\xFF",
                                         "日本",    "e\u0301",
                                         "\u00E9",  "straße",
                                         "STRASSE", std::string(400, 'x')};
    for (const Language language : {Language::english, Language::spanish}) {
        for (const std::string& a : names) {
            for (const std::string& b : names) {
                const auto byKey = nameSortKey(a, language).compare(nameSortKey(b, language)) <=> 0;
                EXPECT_TRUE(byKey == compareNames(a, b, language)) << a << " and " << b;
            }
        }
    }
}

}  // namespace
}  // namespace tavrin
