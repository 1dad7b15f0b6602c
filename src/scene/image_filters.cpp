// SPDX-License-Identifier: MIT
#include "scene/image_filters.h"

#include "scene/ostream.h"
#include "scene/xml_elements.h"

namespace Quenza {

namespace {

/// A filter without parameters.
void writePlainFilter(OStream& stream, u32 depth, const char* element, const char* kind) {
    writeOpenTag(stream, depth, element);
    writeEmptyElement(stream, depth + 1, kind);
    writeCloseTag(stream, depth, element);
}

} // namespace

void SplatFilterFastBox::writeToXML(OStream& stream, u32 depth) const {
    writePlainFilter(stream, depth, "splat_filter", "fastbox");
}

Ref<SplatFilter> SplatFilterFastBox::clone() const {
    return new SplatFilterFastBox(*this);
}

void SplatFilterRadial::writeToXML(OStream& stream, u32 depth) const {
    writePlainFilter(stream, depth, "splat_filter", "radial");
}

Ref<SplatFilter> SplatFilterRadial::clone() const {
    return new SplatFilterRadial(*this);
}

void SplatFilterMNCubic::writeToXML(OStream& stream, u32 depth) const {
    writeOpenTag(stream, depth, "splat_filter");
    writeOpenTag(stream, depth + 1, "mn_cubic");
    writeDoubleElement(stream, depth + 2, "blur", blur);
    writeDoubleElement(stream, depth + 2, "ring", ring);
    writeCloseTag(stream, depth + 1, "mn_cubic");
    writeCloseTag(stream, depth, "splat_filter");
}

Ref<SplatFilter> SplatFilterMNCubic::clone() const {
    return new SplatFilterMNCubic(*this);
}

void SplatFilterBox::writeToXML(OStream& stream, u32 depth) const {
    writePlainFilter(stream, depth, "splat_filter", "box");
}

Ref<SplatFilter> SplatFilterBox::clone() const {
    return new SplatFilterBox(*this);
}

void DownsizeFilterGaussian::writeToXML(OStream& stream, u32 depth) const {
    writePlainFilter(stream, depth, "downsize_filter", "gaussian");
}

Ref<DownsizeFilter> DownsizeFilterGaussian::clone() const {
    return new DownsizeFilterGaussian(*this);
}

void DownsizeFilterMNCubic::writeToXML(OStream& stream, u32 depth) const {
    writeOpenTag(stream, depth, "downsize_filter");
    writeOpenTag(stream, depth + 1, "mn_cubic");
    writeDoubleElement(stream, depth + 2, "blur", blur);
    writeDoubleElement(stream, depth + 2, "ring", ring);
    writeDoubleElement(stream, depth + 2, "radius", radius);
    writeCloseTag(stream, depth + 1, "mn_cubic");
    writeCloseTag(stream, depth, "downsize_filter");
}

Ref<DownsizeFilter> DownsizeFilterMNCubic::clone() const {
    return new DownsizeFilterMNCubic(*this);
}

void DownsizeFilterSharp::writeToXML(OStream& stream, u32 depth) const {
    writePlainFilter(stream, depth, "downsize_filter", "sharp");
}

Ref<DownsizeFilter> DownsizeFilterSharp::clone() const {
    return new DownsizeFilterSharp(*this);
}

} // namespace Quenza
