// SPDX-License-Identifier: MIT
#include "foundation/uid.h"

#include "foundation/string_utils.h"

namespace Quenza {

String SceneNodeUID::toString() const {
    return Quenza::toString(value_);
}

} // namespace Quenza
