// SPDX-License-Identifier: MIT
#pragma once

#include "scene/material_fields.h"
#include "scene/ostream.h"
#include "scene/xml_write_options.h"

namespace Quenza {

class SceneNode;

/// Writes a material's fields as elements.
class MaterialWriter : public MaterialFields {
public:
    /// `depth` is that of the elements.
    MaterialWriter(OStream& stream, u32 depth, const XMLWriteOptions& options)
        : stream_(stream), depth_(depth), options_(options) {}

    void boolean(const char* element, bool& value) override;
    void integer(const char* element, i32& value) override;
    void number(const char* element, double& value) override;
    void vector(const char* element, Vec3d& value) override;
    void text(const char* element, String& value) override;
    void optionalText(const char* element, String& value) override;
    void table(const char* element, Ref<TabulatedSpectralData>& data) override;
    /// By UID, or by name where the options want no UIDs. The node's UID wins over the stored one; an unbound
    /// reference has an empty name.
    void material(const ReferenceElements& elements, Ref<SceneNodeMaterial>& node,
                  SceneNodeUID& uid) override;
    void medium(Ref<SceneNodeMedium>& node, SceneNodeUID& uid) override;
    void beginGroup(const char* element) override;
    void endGroup(const char* element) override;

private:
    void presentParameter(const char* element, Param& param) override;
    void writeReference(const ReferenceElements& elements, const SceneNode* node, SceneNodeUID uid);

    OStream& stream_;
    u32 depth_;
    const XMLWriteOptions& options_;
};

} // namespace Quenza
