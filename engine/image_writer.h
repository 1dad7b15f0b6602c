// SPDX-License-Identifier: MIT
#pragma once

#include "engine/render_job.h"
#include "engine/session.h"

#include <string>

namespace engine {

/// Writes the image as it is now to all files of `outputs`. Returns "" or what went wrong.
std::string writeImages(const RenderSession& session, const Outputs& outputs);

} // namespace engine
