// SPDX-License-Identifier: MIT
#include "reading/filter_parser.h"

#include "reading/element_table.h"
#include "reading/xml_values.h"

#include <array>
#include <cstddef>
#include <tinyxml.h>

namespace Quenza {

namespace {

namespace xml = SceneParseUtils;

template <class Filter>
void parseCubic(const TiXmlElement& element, Filter& filter) {
    filter.blur = xml::parseOptionalDouble(element, "blur", filter.blur);
    filter.ring = xml::parseOptionalDouble(element, "ring", filter.ring);
}

Ref<SplatFilter> parseSplatCubic(const TiXmlElement& element) {
    constexpr const char* names[] = {"blur", "ring"};
    xml::checkChildrenAreInOnce(element, names);
    const Ref<SplatFilterMNCubic> filter = new SplatFilterMNCubic;
    parseCubic(element, *filter);
    return filter;
}

Ref<DownsizeFilter> parseDownsizeCubic(const TiXmlElement& element) {
    constexpr const char* names[] = {"blur", "ring", "radius"};
    xml::checkChildrenAreInOnce(element, names);
    const Ref<DownsizeFilterMNCubic> filter = new DownsizeFilterMNCubic;
    parseCubic(element, *filter);
    filter->radius = xml::parseOptionalDouble(element, "radius", filter->radius);
    return filter;
}

template <class Base, class Filter>
Ref<Base> parsePlain(const TiXmlElement& element) {
    xml::checkChildrenAreIn(element, {});
    return new Filter;
}

template <class Base>
struct Kind {
    const char* element;
    Ref<Base> (*parse)(const TiXmlElement&);
};

constexpr Kind<SplatFilter> SPLAT_KINDS[] = {
    {"fastbox", parsePlain<SplatFilter, SplatFilterFastBox>},
    {"box", parsePlain<SplatFilter, SplatFilterBox>},
    {"radial", parsePlain<SplatFilter, SplatFilterRadial>},
    {"mn_cubic", parseSplatCubic},
};

constexpr Kind<DownsizeFilter> DOWNSIZE_KINDS[] = {
    {"mn_cubic", parseDownsizeCubic},
    {"sharp", parsePlain<DownsizeFilter, DownsizeFilterSharp>},
    {"gaussian", parsePlain<DownsizeFilter, DownsizeFilterGaussian>},
};

template <class Base, std::size_t N>
Ref<Base> parseFilter(const TiXmlElement& element, const Kind<Base> (&kinds)[N]) {
    const std::array<const char*, N> names = elementNames(kinds);
    xml::checkChildrenAreIn(element, names);
    const TiXmlElement& child = xml::checkOnlyOneOf(element, names);
    return rowOf(kinds, child)->parse(child);
}

} // namespace

Ref<SplatFilter> parseSplatFilter(const TiXmlElement& element) {
    return parseFilter(element, SPLAT_KINDS);
}

Ref<DownsizeFilter> parseDownsizeFilter(const TiXmlElement& element) {
    return parseFilter(element, DOWNSIZE_KINDS);
}

} // namespace Quenza
