// SPDX-License-Identifier: MIT
#include "host/baselink.h"

#include "host/baselist.h"
#include "host/tables.h"

void BaseLink::SetLink(BaseList2D* target) {
    LinkToken* const old = token_;
    token_ = target ? HostTables()->list->AcquireLinkToken(target) : nullptr;
    BaseLink released;
    released.token_ = old;
}

BaseList2D* BaseLink::GetLink(const BaseDocument* document, int32_t type) const {
    BaseList2D* const target = GetTarget();
    if (!target || (type != 0 && !target->IsInstanceOf(type))) {
        return nullptr;
    }
    return document && target->GetDocument() != document ? nullptr : target;
}

void BaseLink::Release() {
    if (token_ && token_->references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        delete token_;
    }
    token_ = nullptr;
}
