// SPDX-License-Identifier: MIT
#include "headless/tables/host_table.h"

#include "headless/tables/tables.h"
#include "host/ids.h"

namespace headless {

const HostTable* hostTable() {
    static const HostTable table = {
        .apiVersion = API_VERSION,
        .general = generalTable(),
        .list = listTable(),
        .document = documentTable(),
        .object = objectTable(),
        .tag = tagTable(),
        .material = materialTable(),
        .shading = shadingTable(),
        .bitmap = bitmapTable(),
        .draw = drawTable(),
        .description = descriptionTable(),
        .thread = threadTable(),
        .dialog = dialogTable(),
        .registration = registrationTable(),
        .render = renderTable(),
    };
    return &table;
}

} // namespace headless
