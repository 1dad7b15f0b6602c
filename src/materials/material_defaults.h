// SPDX-License-Identifier: MIT
#pragma once

class BaseContainer;

/// Fills the container of a new material. Switches of channels and links stay unset.
void initMaterial(BaseContainer& data);
