// SPDX-License-Identifier: MIT
#pragma once

class BaseContainer;

/// Metres per document unit by the render settings' container, or by the host's preferences without one
/// (null).
float unitToMetres(const BaseContainer* renderSettings);
