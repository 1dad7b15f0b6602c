// SPDX-License-Identifier: MIT
#include "host/menu.h"

#include "host/tables.h"

BaseContainer* GetMenuResource(const String& name) {
    return HostTables()->general->GetMenuResource(name);
}

BaseContainer* SearchMenuResource(BaseContainer* menu, const String& entry, int32_t& index) {
    return HostTables()->general->SearchMenuResource(menu, entry, index);
}
