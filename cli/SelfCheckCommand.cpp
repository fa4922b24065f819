#include "SelfCheckCommand.h"

#include "CodecHost.h"
#include "FileDecoder.h"

#include <kolt/EncoderInfo.h>
#include <kolt/StringUtils.h>
#include <koltx/DecoderFactory.h>
#include <koltx/EncoderFactory.h>

#include <ostream>

int SelfCheckCommand::run(CodecHost const& host, std::ostream& out, std::ostream& err) {
    out << "codec library: " << host.libraryPath() << "\n";
    bool decoder = false;
    for (koltx::ExtensionFactory const* factory : host.codecFactories()) {
        std::wstring extensions;
        if (auto const* d = dynamic_cast<koltx::DecoderFactory const*>(factory)) {
            extensions = d->getFileExtensions().toString();
            decoder = decoder || d->getID() == FileDecoder::DecoderID;
        } else if (auto const* e = dynamic_cast<koltx::EncoderFactory const*>(factory)) {
            extensions = e->getEncoderInfo()->getExtensions();
        }
        out << (factory->getExtensionType() == koltx::Extension::ET_DECODER ? "decoder  "
                                                                            : "encoder  ")
            << kolt::StringUtils::toUTF8(factory->getID()) << "  \""
            << kolt::StringUtils::toUTF8(factory->getName()) << "\"  "
            << kolt::StringUtils::toUTF8(extensions) << "\n";
    }
    if (!decoder) {
        err << "gmlcodec: the codec did not register its decoder\n";
        return 1;
    }
    out << "ok\n";
    return 0;
}
