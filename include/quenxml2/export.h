// SPDX-License-Identifier: Apache-2.0
//
// QUENXML2_API marks what the shared library exports. Everything else is hidden.
#ifndef QUENXML2_EXPORT_H_
#define QUENXML2_EXPORT_H_

#define QUENXML2_API __attribute__((visibility("default")))

#endif  // QUENXML2_EXPORT_H_
