#include "decoder/DecoderConstants.h"

std::wstring const DecoderID = L"com.morvane.kolt.codecs.CityGMLDecoder";
std::wstring const DecoderName = L"CityGML Decoder";
std::wstring const DecoderDescription = L"Decoder for the CityGML format";
std::wstring const DecoderFileExtension = L".gml";
