#include "SaxParser.h"

#include <libxml/globals.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlerror.h>

#include <exception>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <vector>

namespace citygml {

namespace {

constexpr std::size_t ChunkSize = 256 * 1024;

struct Context {
    SaxHandler* handler;
    std::vector<XmlAttribute> attributes;
    // An exception must not unwind through the C parser; it waits here until the chunk returns.
    std::exception_ptr error;
    std::size_t depth = 0;
};

Context* contextOf(void* ctx) {
    return static_cast<Context*>(static_cast<xmlParserCtxtPtr>(ctx)->_private);
}

template <class F> void guarded(void* ctx, F&& f) {
    Context* c = contextOf(ctx);
    if (c->error)
        return;
    try {
        f(*c);
    } catch (...) {
        c->error = std::current_exception();
        xmlStopParser(static_cast<xmlParserCtxtPtr>(ctx));
    }
}

char const* cs(xmlChar const* s) {
    return reinterpret_cast<char const*>(s);
}

// The line where the start tag just read begins. The parser is still inside the tag, so the
// text back to its '<' holds the tag's own line breaks; attribute values hold no raw '<'.
int startTagLine(void* context) {
    xmlParserInputPtr in = static_cast<xmlParserCtxtPtr>(context)->input;
    if (!in || !in->cur || !in->base)
        return 0;
    int line = in->line;
    for (xmlChar const* p = in->cur; p > in->base && *p != '<'; --p)
        if (*p == '\n')
            --line;
    return line;
}

[[noreturn]] void refuse(int line, std::string const& reason) {
    throw std::runtime_error("line " + std::to_string(line) + ": " + reason);
}

void onStart(void* ctx, xmlChar const* localName, xmlChar const* prefix, xmlChar const* uri, int,
             xmlChar const**, int nbAttributes, int, xmlChar const** attributes) {
    guarded(ctx, [&](Context& c) {
        auto* ctxt = static_cast<xmlParserCtxtPtr>(ctx);
        if (++c.depth > SaxParser::MaxDepth)
            refuse(startTagLine(ctxt), "elements nest deeper than " +
                                           std::to_string(SaxParser::MaxDepth) +
                                           " levels, the most this reader accepts");
        c.attributes.resize(static_cast<std::size_t>(nbAttributes));
        for (int i = 0; i < nbAttributes; ++i) {
            xmlChar const** a = attributes + 5 * i;
            c.attributes[static_cast<std::size_t>(i)] = {cs(a[0]), cs(a[1]), cs(a[2]), cs(a[3]),
                                                         cs(a[4])};
        }
        c.handler->startElement(cs(localName), cs(prefix), cs(uri), c.attributes.data(),
                                nbAttributes, StartLine{startTagLine, ctxt});
    });
}

void onEnd(void* ctx, xmlChar const*, xmlChar const*, xmlChar const*) {
    guarded(ctx, [](Context& c) {
        --c.depth;
        c.handler->endElement();
    });
}

void onCharacters(void* ctx, xmlChar const* text, int length) {
    guarded(ctx,
            [&](Context& c) { c.handler->characters(cs(text), static_cast<std::size_t>(length)); });
}

// References to user entities are dropped: their text never reaches the model.
void onReference(void*, xmlChar const*) {}

// A document that declares entities of its own is refused before any of them is used: expanding
// them is how a small file asks for gigabytes, and CityGML has no use for them.
void onEntityDecl(void* ctx, xmlChar const* name, int, xmlChar const*, xmlChar const*, xmlChar*) {
    guarded(ctx, [&](Context&) {
        auto* ctxt = static_cast<xmlParserCtxtPtr>(ctx);
        refuse(ctxt->input ? ctxt->input->line : 0,
               "the document declares its own entity '" + std::string(cs(name)) +
                   "'; documents that declare entities are not read");
    });
}

// Errors are read from the context after each chunk; nothing goes to stderr.
void onError(void*, xmlErrorPtr) {}

void silentGenericError(void*, char const*, ...) {}

// libxml2 reports encoding faults through its generic handler, which prints to stderr; for the
// length of one parse on this thread they are dropped (the parse fails with its own message).
class GenericErrorGuard {
public:
    GenericErrorGuard() : m_function(xmlGenericError), m_context(xmlGenericErrorContext) {
        xmlSetGenericErrorFunc(nullptr, silentGenericError);
    }
    ~GenericErrorGuard() { xmlSetGenericErrorFunc(m_context, m_function); }
    GenericErrorGuard(GenericErrorGuard const&) = delete;
    GenericErrorGuard& operator=(GenericErrorGuard const&) = delete;

private:
    xmlGenericErrorFunc m_function;
    void* m_context;
};

struct CtxtDeleter {
    void operator()(xmlParserCtxtPtr p) const {
        if (p->myDoc)
            xmlFreeDoc(p->myDoc);
        xmlFreeParserCtxt(p);
    }
};

[[noreturn]] void fail(xmlParserCtxtPtr ctxt) {
    if (auto* c = static_cast<Context*>(ctxt->_private); c->error)
        std::rethrow_exception(c->error);
    xmlErrorPtr e = xmlCtxtGetLastError(ctxt);
    // Encoding faults leave no error record; the input position still tells where.
    std::string message = "the document's bytes do not fit its declared encoding";
    int line = ctxt->input ? ctxt->input->line : 0;
    int column = ctxt->input ? ctxt->input->col : 0;
    if (e && e->code != 0) {
        line = e->line;
        column = e->int2;
        if (e->message) {
            message = e->message;
            while (!message.empty() && (message.back() == '\n' || message.back() == '\r'))
                message.pop_back();
        }
    }
    throw std::runtime_error("line " + std::to_string(line) + ", column " + std::to_string(column) +
                             ": " + message);
}

} // namespace

void SaxParser::parse(std::istream& stream, SaxHandler& handler) {
    static std::once_flag initialised;
    std::call_once(initialised, xmlInitParser);

    xmlSAXHandler sax;
    xmlSAXVersion(&sax, 2);
    sax.startElementNs = onStart;
    sax.endElementNs = onEnd;
    sax.characters = onCharacters;
    sax.cdataBlock = onCharacters;
    sax.ignorableWhitespace = nullptr;
    sax.reference = onReference;
    sax.entityDecl = onEntityDecl;
    sax.serror = onError;
    sax.warning = nullptr;
    sax.error = nullptr;
    sax.fatalError = nullptr;
    sax.externalSubset = nullptr;
    sax.resolveEntity = nullptr;

    GenericErrorGuard quiet;
    Context context{&handler, {}, nullptr};
    std::vector<char> buffer(ChunkSize);

    stream.read(buffer.data(), 4);
    auto first = static_cast<int>(stream.gcount());
    std::unique_ptr<xmlParserCtxt, CtxtDeleter> ctxt(
        xmlCreatePushParserCtxt(&sax, nullptr, buffer.data(), first, nullptr));
    if (!ctxt)
        throw std::runtime_error("cannot create the XML parser");
    // The SAX callbacks get the context itself, so they can reach the handler and the position.
    ctxt->_private = &context;
    ctxt->userData = ctxt.get();
    xmlCtxtUseOptions(ctxt.get(), XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING |
                                      XML_PARSE_NOCDATA | XML_PARSE_COMPACT);
    ctxt->replaceEntities = 0;
    ctxt->loadsubset = 0;
    ctxt->validate = 0;

    if (first > 0 && !ctxt->wellFormed)
        fail(ctxt.get());
    while (stream) {
        stream.read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        auto n = static_cast<int>(stream.gcount());
        if (n <= 0)
            break;
        if (xmlParseChunk(ctxt.get(), buffer.data(), n, 0) != 0 || !ctxt->wellFormed)
            fail(ctxt.get());
    }
    if (xmlParseChunk(ctxt.get(), nullptr, 0, 1) != 0 || !ctxt->wellFormed)
        fail(ctxt.get());
}

} // namespace citygml
