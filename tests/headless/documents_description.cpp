// SPDX-License-Identifier: MIT
#include "headless/documents_description.h"

#include "headless/documents/node_ids.h"
#include "headless/model/handles.h"
#include "headless/model/track.h"
#include "host/inexclude.h"

#include <algorithm>
#include <iomanip>
#include <map>
#include <sstream>

namespace headless {

namespace {

std::ostream& operator<<(std::ostream& out, const Vector& v) {
    // -0 is 0, as it is when vectors are compared.
    return out << "(" << v.x + 0.0f << " " << v.y + 0.0f << " " << v.z + 0.0f << ")";
}

std::ostream& operator<<(std::ostream& out, const Matrix& m) {
    return out << m.off << m.axisX << m.axisY << m.axisZ;
}

std::ostream& operator<<(std::ostream& out, const BaseSelect& selection) {
    int32_t from = 0, to = 0;
    for (int32_t i = 0; selection.GetRange(i, &from, &to); ++i) {
        out << " " << from << "-" << to;
    }
    return out;
}

class Describer {
public:
    explicit Describer(const Document& document) : document_(document), nodes_(nodesOf(document)) {
        out_ << std::setprecision(9);
        for (size_t i = 0; i < nodes_.size(); ++i) {
            places_[nodes_[i]] = i;
        }
    }

    std::string run() {
        out_ << "fps " << document_.fps() << " " << document_.time.Get() << " " << document_.minTime.Get()
             << " " << document_.maxTime.Get() << " camera " << place(document_.view().chosenCamera())
             << " setup " << place(document_.activeRenderData()) << "\n";
        for (const Node* const node : nodes_) {
            describeNode(*node);
        }
        return out_.str();
    }

private:
    int64_t place(const Node* node) const {
        const auto found = places_.find(node);
        return found == places_.end() ? -1 : static_cast<int64_t>(found->second);
    }

    std::string value(const GeData& value) const {
        std::ostringstream out;
        out << std::setprecision(9) << value.GetType() << ":";
        switch (value.GetType()) {
        case DA_LONG:
            out << value.GetLong();
            break;
        case DA_REAL:
            out << value.GetReal();
            break;
        case DA_VECTOR:
            out << value.GetVector();
            break;
        case DA_MATRIX:
            out << value.GetMatrix();
            break;
        case DA_TIME:
            out << value.GetTime().GetNumerator() << "/" << value.GetTime().GetDenominator();
            break;
        case DA_STRING:
            out << value.GetString().GetUtf8();
            break;
        case DA_FILENAME:
            out << value.GetFilename().GetUtf8();
            break;
        case DA_LINK:
            out << place(fromHost(value.GetLink()));
            break;
        case DA_CUSTOM:
            if (auto* const custom = value.GetCustomDataType(CUSTOMDATATYPE_INEXCLUDE_LIST)) {
                const auto& list = *static_cast<InExcludeData*>(custom);
                for (int32_t i = 0; i < list.GetObjectCount(); ++i) {
                    out << " " << place(fromHost(list.ObjectFromIndex(nullptr, i))) << "/"
                        << list.GetFlags(i);
                }
            }
            break;
        default:
            out << "?";
        }
        return out.str();
    }

    void describeNode(const Node& node) {
        out_ << place(&node) << " kind " << static_cast<int>(node.kind()) << " type " << node.type() << " \""
             << node.name << "\" layer " << place(node.layer()) << " disabled "
             << (node.kind() == NodeKind::videoPost && (node.info & BIT_VPDISABLED) != 0) << "\n";
        // The order of the numbers doesn't count.
        std::map<int32_t, std::string> values;
        for (int32_t i = 0; i < node.data.GetCount(); ++i) {
            values[node.data.GetIndexId(i)] = value(node.data.GetIndexData(i));
        }
        for (const auto& [id, text] : values) {
            out_ << "  " << id << " " << text << "\n";
        }
        if (node.animation) {
            describeTracks(*node.animation);
        }
        switch (node.kind()) {
        case NodeKind::object:
            describeObject(static_cast<const Object&>(node));
            break;
        case NodeKind::tag:
            describeTag(static_cast<const Tag&>(node));
            break;
        case NodeKind::layer: {
            const LayerData& flags = static_cast<const Layer&>(node).ownFlags();
            out_ << "  parent " << place(static_cast<const Layer&>(node).parent()) << " flags " << flags.view
                 << flags.render << flags.manager << "\n";
            break;
        }
        case NodeKind::shader:
            out_ << "  parent " << place(static_cast<const Shader&>(node).parent()) << "\n";
            break;
        default:
            break;
        }
    }

    void describeTracks(const Animation& animation) {
        for (const Track& track : animation.tracks) {
            out_ << "  track " << static_cast<int>(track.channel) << " " << track.parameter << " "
                 << static_cast<int>(track.component) << " " << static_cast<int>(track.interpolation);
            for (const Key& key : track.keys) {
                out_ << " [" << key.time << " " << value(key.value) << "]";
            }
            out_ << "\n";
        }
    }

    void describeObject(const Object& object) {
        out_ << "  parent " << place(object.parent()) << " at " << object.matrix << " modes "
             << int{object.renderMode} << int{object.editorMode} << object.enabled << "\n";
        const PolygonNode* const polygons = asPolygons(&object);
        if (!polygons) {
            return;
        }
        for (const Vector& point : polygons->points) {
            out_ << "  " << point;
        }
        for (const CPolygon& polygon : polygons->polygons) {
            out_ << "  " << polygon.a << " " << polygon.b << " " << polygon.c << " " << polygon.d;
        }
        out_ << "  broken" << polygons->brokenEdges << "\n";
    }

    void describeTag(const Tag& tag) {
        out_ << "  on " << place(tag.object());
        if (tag.type() == Ttexture) {
            const auto& texture = static_cast<const TextureTagNode&>(tag);
            out_ << " material " << place(texture.material()) << " matrix " << texture.matrix;
        } else if (tag.type() == Tuvw) {
            for (const UVWStruct& record : static_cast<const UVWTagNode&>(tag).records) {
                out_ << " " << record.a << record.b << record.c << record.d;
            }
        } else if (tag.type() == Tpolygonselection) {
            out_ << static_cast<const SelectionTagNode&>(tag).selection;
        }
        out_ << "\n";
    }

    const Document& document_;
    std::vector<Node*> nodes_;
    std::map<const Node*, size_t> places_;
    std::ostringstream out_;
};

} // namespace

std::string describe(const Document& document) {
    return Describer(document).run();
}

} // namespace headless
