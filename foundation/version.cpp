// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/version.h>

namespace quen {

const char* QuenXML2Version() noexcept { return kQuenXML2Version; }

}  // namespace quen
