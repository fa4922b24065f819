// Fuzz entry for the whole decode: the codec's decoder, loaded through the host, reads the bytes
// as a CityGML file. Whatever the bytes, the decoder reports through its warnings and returns
// meshes that keep the host's rules; it never throws.
#include "FuzzCodec.h"

#include <kolt/Cache.h>
#include <koltx/KOLTUtils.h>

#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    FuzzCodec::manager();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    auto const cache = koltx::KOLTUtils::share(kolt::Cache::create());
    std::wstring warnings;
    FuzzCodec::decode(std::string(reinterpret_cast<char const*>(data), size), cache.get(),
                      warnings);
    return 0;
}
