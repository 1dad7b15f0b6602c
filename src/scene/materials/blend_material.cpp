// SPDX-License-Identifier: MIT
#include "scene/materials/blend_material.h"

namespace Quenza {

void BlendMaterial::describe(MaterialFields& fields) {
    fields.material({"a_mat_uid", "a_name"}, a_mat, a_mat_uid);
    fields.material({"b_mat_uid", "b_name"}, b_mat, b_mat_uid);
    fields.parameter("blend", blend);
    fields.boolean("step_blend", step_blend);
}

} // namespace Quenza
