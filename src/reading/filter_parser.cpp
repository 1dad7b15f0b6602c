// SPDX-License-Identifier: MIT
#include "reading/filter_parser.h"

#include "reading/xml_values.h"

#include <string_view>
#include <tinyxml.h>

namespace Quenza {

namespace {

namespace xml = SceneParseUtils;

/// The one child of `element`, which must have a name in `kinds`.
template <class Kinds>
const TiXmlElement& onlyChild(const TiXmlElement& element, const Kinds& kinds) {
    xml::checkChildrenAreIn(element, kinds);
    return xml::checkOnlyOneOf(element, kinds);
}

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

} // namespace

Ref<SplatFilter> parseSplatFilter(const TiXmlElement& element) {
    constexpr const char* kinds[] = {"fastbox", "box", "radial", "mn_cubic"};
    const TiXmlElement& child = onlyChild(element, kinds);
    const std::string_view kind = child.Value();
    if (kind == "mn_cubic")
        return parseSplatCubic(child);
    xml::checkChildrenAreIn(child, {});
    if (kind == "box")
        return new SplatFilterBox;
    if (kind == "radial")
        return new SplatFilterRadial;
    return new SplatFilterFastBox;
}

Ref<DownsizeFilter> parseDownsizeFilter(const TiXmlElement& element) {
    constexpr const char* kinds[] = {"mn_cubic", "sharp", "gaussian"};
    const TiXmlElement& child = onlyChild(element, kinds);
    const std::string_view kind = child.Value();
    if (kind == "mn_cubic")
        return parseDownsizeCubic(child);
    xml::checkChildrenAreIn(child, {});
    if (kind == "sharp")
        return new DownsizeFilterSharp;
    return new DownsizeFilterGaussian;
}

} // namespace Quenza
