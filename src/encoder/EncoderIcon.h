#pragma once

namespace encoder_icon {

// Base64 of the encoder's 64x64 PNG icon (bench/encoder/make_icon.cpp draws it).
extern char const* const cityGMLEncoderIcon;

} // namespace encoder_icon
