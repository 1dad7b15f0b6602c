// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/string.h"
#include "foundation/types.h"
#include "reading/xml_place.h"
#include "reading/xml_precheck.h"

#include <memory>
#include <string>

class TiXmlDocument;
class TiXmlElement;

namespace Quenza {

/// Goes through the children of a document's root, of which only one at a time becomes nodes: for files of
/// very many elements that takes less time than XMLDocument and little memory beyond the text. The whole text
/// is checked beforehand; faults are those of XMLDocument.
class XMLElementReader {
public:
    explicit XMLElementReader(const String& path);
    ~XMLElementReader();
    XMLElementReader(const XMLElementReader&) = delete;
    XMLElementReader& operator=(const XMLElementReader&) = delete;

    const std::string& rootName() const { return outline_.root_name; }

    /// The next child element with its line and column in the file, valid until the next call; null at the
    /// end.
    const TiXmlElement* next();

private:
    void setPlaces(TiXmlElement& element);

    XMLOutline outline_;
    std::string text_;
    u64 next_child_ = 0;
    u64 next_element_ = 0; ///< Of the outline's elements.
    u64 offset_ = 0;       ///< Of the last element.
    XMLPlace place_;       ///< At `offset_`.
    std::unique_ptr<TiXmlDocument> document_;
};

} // namespace Quenza
