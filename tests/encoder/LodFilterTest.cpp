#include <encoder/LodFilter.h>

#include <Files.h>
#include <TestData.h>
#include <gtest/gtest.h>
#include <kolt/StringUtils.h>

#include <stdexcept>
#include <string>

TEST(LodFilter, ComparesTheNumberBehindLodWithTheLimit) {
    for (auto const& line :
         testsupport::tableRows(testsupport::dataFile("encoder/lod_filter.txt"))) {
        auto const field = testsupport::split(line);
        EXPECT_EQ(lodWithinLimit(kolt::StringUtils::toUTF16(field.at(0)), std::stoi(field.at(1))),
                  field.at(2) == "yes")
            << line;
    }
    EXPECT_TRUE(lodWithinLimit(L"", 0));
}

TEST(LodFilter, RefusesLodWithoutANumber) {
    try {
        lodWithinLimit(L"bldg:lodSurface", 4);
        FAIL() << "no exception";
    } catch (std::invalid_argument const& e) {
        EXPECT_STREQ("invalid stoi argument", e.what());
    }
    try {
        lodWithinLimit(L"bldg:lod99999999999999999999Solid", 4);
        FAIL() << "no exception";
    } catch (std::out_of_range const& e) {
        EXPECT_STREQ("stoi argument out of range", e.what());
    }
}
