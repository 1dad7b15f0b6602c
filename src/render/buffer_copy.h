// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/image_buffers.h"
#include "host/videopost.h"
#include "render/picture_job.h"

/// Copies a display image into the job's region of the host's buffer and tells the host. False, with nothing
/// copied, when the image isn't of the region's size or the buffer's size has changed since the export.
bool copyToBuffer(const Quenza::UInt8Buffer& image, VPBuffer& buffer, const PictureJob& job);
