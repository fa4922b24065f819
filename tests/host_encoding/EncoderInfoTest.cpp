#include "kolt/EncoderInfo.h"
#include "kolt/AttributeMap.h"
#include "kolt/AttributeMapBuilder.h"
#include "koltx/EncodeOptionsValidator.h"
#include "koltx/EncoderInfoBuilder.h"
#include "koltx/KOLTUtils.h"
#include "koltx/Log.h"
#include "koltx/MemoryLogSink.h"
#include "koltx/StatusException.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <memory>
#include <string>

using koltx::KOLTUtils;

namespace {

// Clamps "precision" into [0.5, 2] and upper-cases "mode"; throws for the "name" "boom".
class ClampValidator : public koltx::EncodeOptionsValidator {
public:
    void validate(KOLTUtils::ObjectPtr<kolt::AttributeMap const> const& options,
                  KOLTUtils::ObjectPtr<kolt::AttributeMapBuilder> const& builder) override {
        double const precision = options->getFloat(L"precision");
        builder->setFloat(L"precision", std::min(2.0, std::max(0.5, precision)));
        std::wstring mode = options->getString(L"mode");
        for (auto& c : mode)
            c = static_cast<wchar_t>(std::towupper(c));
        builder->setString(L"mode", mode.c_str());
        if (std::wcscmp(options->getString(L"name"), L"boom") == 0)
            throw std::runtime_error("boom");
    }
};

struct Info {
    std::shared_ptr<ClampValidator> validator = std::make_shared<ClampValidator>();
    std::unique_ptr<kolt::EncoderInfo const, KOLTUtils::ObjectDestroyer> info;

    Info() {
        koltx::EncoderInfoBuilder builder;
        builder.setID(L"test.Encoder").setName(L"Test").setDescription(L"Writes tests");
        KOLTUtils::AttributeMapBuilderPtr defaults(kolt::AttributeMapBuilder::create());
        defaults->setString(L"name", L"default");
        defaults->setInt(L"lod", 4);
        defaults->setFloat(L"precision", 1.0);
        defaults->setBool(L"merge", true);
        defaults->setString(L"mode", L"fast");
        double const offset[3] = {0, 0, 0};
        defaults->setFloatArray(L"offset", offset, 3);
        KOLTUtils::AttributeMapPtr map(defaults->createAttributeMap());
        builder.setDefaultOptions(map.get());
        map.reset(); // the builder keeps its own copy
        builder.setValidator(validator);
        info.reset(builder.create(nullptr));
    }

    KOLTUtils::AttributeMapPtr validate(kolt::AttributeMap const* options,
                                        kolt::Status* status) const {
        kolt::AttributeMap const* out = nullptr;
        info->createValidatedOptions(options, &out, status);
        return KOLTUtils::AttributeMapPtr(out);
    }
};

KOLTUtils::AttributeMapPtr given(void (*fill)(kolt::AttributeMapBuilder&)) {
    KOLTUtils::AttributeMapBuilderPtr builder(kolt::AttributeMapBuilder::create());
    fill(*builder);
    return KOLTUtils::AttributeMapPtr(builder->createAttributeMap());
}

} // namespace

TEST(EncoderInfo, RefusesAnInformationWithoutIdAndFindsOnlyKnownOptions) {
    Info const fixture;
    EXPECT_EQ(fixture.info->getValidator(), fixture.validator);
    EXPECT_EQ(fixture.info->findAnnotation(L"offset"), nullptr);
    kolt::Status status = 0;
    EXPECT_EQ(koltx::EncoderInfoBuilder().setName(L"x").create(&status), nullptr);
    EXPECT_EQ(status, kolt::STATUS_ILLEGAL_VALUE);
}

TEST(EncoderInfo, ValidatedOptionsStartFromDefaultsAndOverlayGivenValues) {
    Info const fixture;
    kolt::Status status = 99;
    auto defaults = fixture.validate(nullptr, &status);
    ASSERT_EQ(status, 0);
    ASSERT_TRUE(defaults);
    EXPECT_STREQ(defaults->getString(L"name"), L"default");
    EXPECT_EQ(defaults->getInt(L"lod"), 4);
    EXPECT_TRUE(defaults->getBool(L"merge"));
    EXPECT_STREQ(defaults->getString(L"mode"), L"FAST"); // the validator ran
    size_t count = 0;
    defaults->getFloatArray(L"offset", &count);
    EXPECT_EQ(count, 3u);

    auto options = given([](kolt::AttributeMapBuilder& b) {
        b.setString(L"name", L"city");
        b.setInt(L"lod", 2);
        b.setBool(L"merge", false);
        b.setFloat(L"precision", 0.75);
        b.setString(L"unknown", L"dropped");
        double const offset[1] = {7};
        b.setFloatArray(L"offset", offset, 1);
    });
    auto validated = fixture.validate(options.get(), &status);
    ASSERT_EQ(status, 0);
    EXPECT_STREQ(validated->getString(L"name"), L"city");
    EXPECT_EQ(validated->getInt(L"lod"), 2);
    EXPECT_FALSE(validated->getBool(L"merge"));
    EXPECT_DOUBLE_EQ(validated->getFloat(L"precision"), 0.75);
    EXPECT_FALSE(validated->hasKey(L"unknown"));
    double const* offset = validated->getFloatArray(L"offset", &count);
    ASSERT_EQ(count, 1u);
    EXPECT_EQ(offset[0], 7);
    // The caller's map is not touched.
    EXPECT_EQ(options->getFloat(L"precision"), 0.75);
}

TEST(EncoderInfo, WrongTypeOrFailingValidatorIsAnErrorNamingTheKey) {
    Info const fixture;
    auto sink = std::make_shared<koltx::MemoryLogSink>();
    koltx::Log::Scope scope(sink, kolt::LOG_TRACE);

    auto wrong = given([](kolt::AttributeMapBuilder& b) { b.setFloat(L"lod", 2.0); });
    kolt::Status status = 0;
    EXPECT_FALSE(fixture.validate(wrong.get(), &status));
    EXPECT_EQ(status, kolt::STATUS_KEY_TYPE_MISMATCH);
    ASSERT_EQ(sink->getEntries().size(), 1u);
    EXPECT_NE(sink->getEntries()[0].second.find("'lod' is float, expected int"), std::string::npos);
    try {
        fixture.validate(wrong.get(), nullptr);
        FAIL() << "no exception";
    } catch (koltx::StatusException const& e) {
        EXPECT_EQ(e.getStatus(), kolt::STATUS_KEY_TYPE_MISMATCH);
        EXPECT_NE(std::string(e.what()).find("'lod'"), std::string::npos);
    }

    auto boom = given([](kolt::AttributeMapBuilder& b) { b.setString(L"name", L"boom"); });
    EXPECT_FALSE(fixture.validate(boom.get(), &status));
    EXPECT_EQ(status, kolt::STATUS_UNSPECIFIED_ERROR);
    EXPECT_THROW(fixture.validate(boom.get(), nullptr), koltx::StatusException);
}

TEST(EncoderInfo, FloatOptionsThatAreNotFiniteAreRefused) {
    Info const fixture;
    for (auto fill : {+[](kolt::AttributeMapBuilder& b) { b.setFloat(L"precision", std::nan("")); },
                      +[](kolt::AttributeMapBuilder& b) { b.setFloat(L"precision", -HUGE_VAL); },
                      +[](kolt::AttributeMapBuilder& b) {
                          double const offset[3] = {0, HUGE_VAL, 0};
                          b.setFloatArray(L"offset", offset, 3);
                      }}) {
        kolt::Status status = 0;
        EXPECT_FALSE(fixture.validate(given(fill).get(), &status));
        EXPECT_EQ(status, kolt::STATUS_ILLEGAL_VALUE);
    }
}
