// SPDX-License-Identifier: Apache-2.0
//
// The marks of what the shared library exports, and of what it does not.
#ifndef QUENXML2_EXPORT_H_
#define QUENXML2_EXPORT_H_

// Marks what the shared library exports. Everything else is hidden.
#define QUENXML2_API __attribute__((visibility("default")))
// Marks what is hidden within an exported class.
#define QUENXML2_HIDDEN __attribute__((visibility("hidden")))

#endif  // QUENXML2_EXPORT_H_
