// SPDX-License-Identifier: MIT
#pragma once

#include "host/filename.h"
#include "scene/scene_node_model.h"

#include <vector>

class BaseMaterial;
class BaseTag;
struct ExportContext;

/// Gives the model of a light what the light tag tells of its strength and distribution.
void addTagEmission(const ExportContext& context, Quenza::SceneNodeModel& model, const BaseTag* lightTag);

/// Gives the model of an object what those of its materials tell that are in the scene.
void addMaterialEmission(const ExportContext& context, Quenza::SceneNodeModel& model,
                         const std::vector<BaseMaterial*>& materials);

/// The faces of one material shine with the distribution of an IES file.
void addIESProfile(Quenza::SceneNodeModel& model, Quenza::SceneNodeUID materialUID, const Filename& path);

/// The IES file of spot lights for which nothing else is chosen.
Filename defaultIESFile();

/// The scale that a material of the plug-in asks for, for the scene's material of that UID; null for none.
Quenza::Ref<Quenza::EmissionScale> exportEmissionScale(const BaseMaterial* material,
                                                       Quenza::SceneNodeUID uid);
