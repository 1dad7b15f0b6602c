// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"

#include <variant>

namespace Quenza {

/// Pixels of an image a side; beyond it there is no image format either.
inline constexpr i32 MAX_IMAGE_SIDE = 65536;

/// The value of a row of the renderer's settings.
using SettingValue = std::variant<i32, bool, double>;

struct SettingRow {
    const char* key;
    SettingValue value;
};

/// The rows of a new settings node, in the order in which it makes them, with their defaults.
inline constexpr SettingRow DEFAULT_SETTING_ROWS[] = {
    {"bidirectional", true},
    {"verbose", false},
    {"write_aperture_preview", false},
    {"save_tonemapped_exr", false},
    {"save_untonemapped_exr", false},
    {"save_qzi", false},
    {"save_png", true},
    {"auto_choose_num_threads", true},
    {"cache_trees", true},
    {"metropolis", true},
    {"hybrid", false},
    {"logging", true},
    {"watermark", false},
    {"aperture_diffraction", false},
    {"post_process_diffraction", true},
    {"material_id_tracer", false},
    {"render_foreground_alpha", false},
    {"depth_pass", false},
    {"shadow_pass", false},
    {"info_overlay", false},
    {"wait_for_slave_frames_on_stop", false},
    {"close_gui_on_halt", false},
    {"save_images_on_close", false},
    {"glass_acceleration", false},
    {"vignetting", true},
    {"merging", true},
    {"dithering", true},
    {"max_depth", 10000},
    {"max_num_consec_rejections", 10000},
    {"num_threads", 1},
    {"width", 800},
    {"height", 600},
    {"super_sample_factor", 2},
    {"bih_tri_threshold", 1100000},
    {"batched", false},
    {"gpu", false},
    {"halt_time", -1.0},
    {"halt_samples_per_pixel", -1.0},
    {"frame_upload_period", 40.0},
    {"large_mutation_prob", 0.4},
    {"max_change", 0.01},
    {"image_save_period", 1800.0},
};

/// Rows that a scene may have and a new node hasn't, in the order in which the exporter makes them. Their
/// values stand for the type alone.
inline constexpr SettingRow OPTIONAL_SETTING_ROWS[] = {
    {"display_period", 0.0},
    {"polarisation", false},
    {"gpu_path_tracing", false}, ///< Read from older scenes, never written.
};

} // namespace Quenza
