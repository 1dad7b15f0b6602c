// SPDX-License-Identifier: MIT
#pragma once

#include "render/picture_job.h"
#include "scene/scene_node_camera.h"

/// Narrows the camera's sensor to the part that the job renders, so that this part of the picture looks as it
/// does in the whole. The lens stays where it is. Does nothing for the whole picture, nor for a spherical
/// camera, whose picture has no sensor.
void aimAtRegion(Quenza::SceneNodeCamera& camera, const PictureJob& job);
