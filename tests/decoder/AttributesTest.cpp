#include "DecoderTestSupport.h"

#include "decoder/AttributeConversion.h"

#include <citygml/citygml.h>
#include <kolt/AttributeMap.h>
#include <koltx/GeometryBuilder.h>

#include <stdexcept>

using namespace decodertest;

namespace {

std::string attributes() {
    return "<gen:doubleAttribute name=\"a\"><gen:value>1.5</gen:value></gen:doubleAttribute>"
           "<gen:intAttribute name=\"b\"><gen:value>2</gen:value></gen:intAttribute>"
           "<gen:stringAttribute name=\"c\"><gen:value>x</gen:value></gen:stringAttribute>"
           "<gen:dateAttribute name=\"d\"><gen:value>2020-02-29</gen:value></gen:dateAttribute>"
           "<gen:stringAttribute name=\"\xC3\xA9t\xC3\xA9\"><gen:value>\xE2\x82\xAC</gen:value>"
           "</gen:stringAttribute>";
}

std::string root(std::string const& id, std::string const& content) {
    return "<core:cityObjectMember><bldg:Building gml:id=\"" + id + "\">" + content +
           multiSurface("bldg:lod1MultiSurface", {polygon(id + "p", square())}) +
           "</bldg:Building></core:cityObjectMember>";
}

std::vector<std::wstring> fieldKeys(kolt::AttributeMap const& map) {
    std::vector<std::wstring> keys;
    size_t count = 0;
    wchar_t const* const* all = map.getKeys(&count);
    for (size_t i = 0; i < count; ++i) {
        if (std::wstring(all[i]).rfind(L"/fields/", 0) == 0)
            keys.push_back(all[i]);
    }
    return keys;
}

// A geometry builder whose setFloat fails, as a host might when it runs out of room.
class FailingFloatBuilder : public koltx::GeometryBuilder {
public:
    void setFloat(std::wstring const&, double) override {
        throw std::runtime_error("no floats today");
    }
};

TEST(AttributeConversion, TypesMapToHostTypes) {
    Decoded const d = decode(cityModel(root("a", attributes())));
    ASSERT_TRUE(d.geometry());
    kolt::AttributeMap const& map = *d.geometry()->getAttributeMap();
    EXPECT_EQ(map.getType(L"/fields/a"), kolt::PT_FLOAT);
    EXPECT_EQ(map.getFloat(L"/fields/a"), 1.5);
    EXPECT_EQ(map.getType(L"/fields/b"), kolt::PT_INT);
    EXPECT_EQ(map.getInt(L"/fields/b"), 2);
    EXPECT_EQ(map.getType(L"/fields/c"), kolt::PT_STRING);
    EXPECT_EQ(std::wstring(map.getString(L"/fields/c")), L"x");
    EXPECT_EQ(map.getType(L"/fields/d"), kolt::PT_STRING);
    EXPECT_EQ(std::wstring(map.getString(L"/fields/d")), L"2020-02-29");
    EXPECT_EQ(std::wstring(map.getString(L"/fields/\u00e9t\u00e9")), L"\u20ac");
    EXPECT_EQ(d.warnings, L"");
}

TEST(AttributeConversion, OnlyTheFirstRootObjectCounts) {
    Decoded d = decode(cityModel(root("a", "<gen:intAttribute name=\"first\"><gen:value>1"
                                           "</gen:value></gen:intAttribute>") +
                                 root("b", attributes())));
    EXPECT_EQ(fieldKeys(*d.geometry()->getAttributeMap()),
              std::vector<std::wstring>{L"/fields/first"});
    d = decode(cityModel(root("a", "") + root("b", attributes())));
    ASSERT_TRUE(d.geometry());
    EXPECT_TRUE(fieldKeys(*d.geometry()->getAttributeMap()).empty());
}

TEST(AttributeConversion, AFailingSetterSkipsOneAttribute) {
    std::istringstream stream(cityModel(root("a", attributes())));
    auto model = citygml::load(stream, citygml::ParserParams());
    ASSERT_TRUE(model);
    ASSERT_EQ(model->getRootCityObjects().size(), 1u);
    FailingFloatBuilder builder;
    std::wstring warnings = L"before\n";
    convertAttributes(builder, *model->getRootCityObjects()[0], warnings);
    EXPECT_EQ(warnings,
              L"before\nAttribute conversion failed - could not set attribute on the geometry\n");
    auto const geometry = builder.createSharedAndReset(nullptr);
    EXPECT_EQ(fieldKeys(*geometry->getAttributeMap()),
              (std::vector<std::wstring>{L"/fields/b", L"/fields/c", L"/fields/d",
                                         L"/fields/\u00e9t\u00e9"}));
}

} // namespace
