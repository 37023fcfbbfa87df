// SPDX-License-Identifier: Apache-2.0
//
// QUENXML2_API marks what the shared library exports. Everything else is hidden; QUENXML2_HIDDEN marks
// what is hidden within an exported class.
#ifndef QUENXML2_EXPORT_H_
#define QUENXML2_EXPORT_H_

#define QUENXML2_API __attribute__((visibility("default")))
#define QUENXML2_HIDDEN __attribute__((visibility("hidden")))

#endif  // QUENXML2_EXPORT_H_
