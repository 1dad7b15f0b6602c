// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "scene/scene_node_model.h"

class TiXmlElement;

namespace Quenza {

struct ParserState;

/// Reads a `model2`, the form that the writer has. Optional are `uid`, `name`, `scale`,
/// `invisible_to_camera`, `materials` and what may come any number of times: `keyframe`, `ies_profile`,
/// `emission_scale`. Throws QuenzaModelParserExcep or SceneParseUtilsExcep.
Ref<SceneNodeModel> parseModel(ParserState& state, const TiXmlElement& element);

/// Reads the entries `material_uid` and `material_name` of a `materials` element. Names give nodes, UIDs are
/// left to binding.
void parseMaterialList(const ParserState& state, const TiXmlElement& list,
                       Vector<Ref<SceneNodeMaterial>>& materials, Vector<SceneNodeUID>& uids);

/// Reads all `ies_profile` and `emission_scale` children.
void parseModelEmission(const ParserState& state, const TiXmlElement& element, SceneNodeModel& model);

} // namespace Quenza
