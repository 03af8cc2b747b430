// SPDX-License-Identifier: MIT
#include "SourceElement.h"

#include "SkinSourceFile.h"
#include "clsProperties.h"

namespace {

void addAttributes(SourceElement &element, const SourceScan::Line &line)
{
    for (const SourceScan::Attribute &attribute : line.attributes) {
        SourceElement::Property property;
        property.key = attribute.key;
        property.value = attribute.value;
        property.attribute = attribute;
        element.properties.push_back(std::move(property));
    }
}

} // namespace

SourceElement SourceElement::read(const SkinSourceFile &file, quint32 record)
{
    const QByteArray &bytes = file.bytes();
    const ElementSource &source = file.element(record);
    SourceElement element;
    element.tag = SourceScan::scanLine(bytes, source.tagLine);
    addAttributes(element, element.tag);
    for (const quint32 begin : file.moreLines(record)) {
        SourceScan::Line line = SourceScan::scanLine(bytes, begin);
        if (line.isTag) {
            addAttributes(element, line);
            continue;
        }
        Property property;
        property.key = QByteArrayLiteral("ScriptLine");
        property.value = line.scriptText;
        property.isScriptLine = true;
        property.line = std::move(line);
        element.properties.push_back(std::move(property));
    }
    if (source.closingLine != ElementSource::kNone) {
        element.closingBegin = source.closingLine;
        element.closingNext = SourceScan::scanLine(bytes, source.closingLine).next;
    }
    // Repeated keys are numbered as the element's own collection numbered them.
    clsProperties numbered;
    for (Property &property : element.properties)
        property.key = numbered.Add(property.key, property.value).Key();
    return element;
}
