// SPDX-License-Identifier: MIT
#pragma once

#include "host/tables.h"

namespace headless {

// The families of functions that the plug-in sees, one file each. They live as long as the program.
const GeneralTable* generalTable();
const ListTable* listTable();
const DocumentTable* documentTable();
const ObjectTable* objectTable();
const TagTable* tagTable();
const MaterialTable* materialTable();
const ShadingTable* shadingTable();
const BitmapTable* bitmapTable();
const DrawTable* drawTable();
const DescriptionTable* descriptionTable();
const ThreadTable* threadTable();
const DialogTable* dialogTable();
const RegistrationTable* registrationTable();
const RenderTable* renderTable();

} // namespace headless
