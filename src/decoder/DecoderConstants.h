#pragma once

#include <string>

// Identity of the decoder, shared by its factory and the decoder itself.
extern std::wstring const DecoderID;
extern std::wstring const DecoderName;
extern std::wstring const DecoderDescription;
extern std::wstring const DecoderFileExtension;
