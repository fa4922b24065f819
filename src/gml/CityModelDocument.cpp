#include "gml/CityModelDocument.h"

#include "gml/DocumentWriter.h"
#include "gml/XmlWriter.h"

CityModelDocument::CityModelDocument(std::int32_t levelOfDetail,
                                     std::shared_ptr<koltx::EncodePreparator>& preparator,
                                     koltx::DefaultNamePreparator& namePreparator,
                                     koltx::NamePreparator::NamespacePtr textureNamespace,
                                     kolt::SimpleOutputCallbacks* callbacks)
    : levelOfDetail(levelOfDetail), preparator(preparator), namePreparator(namePreparator),
      textureNamespace(std::move(textureNamespace)), callbacks(callbacks) {}

void writeCityModel(CityModelDocument const& document, std::ostream& stream,
                    std::int32_t coordinatePrecision) {
    gml::XmlWriter writer(stream, document.effectiveVersion(), coordinatePrecision);
    writer.writeRaw("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n");
    writer.namespaces = gml::buildNamespaces(document.usedPrefixes, writer.version);
    gml::writeRootOpen(writer);
    for (auto const& group : document.memberGroups)
        gml::writeCityObjectMembers(writer, CityModelDocument::NodeGroup(group));
    gml::writeAppearanceMembers(writer, std::vector(document.appearanceMembers));
    writer.writeRaw(writer.indentation() + "</core:CityModel>\n");
    stream.flush();
}
