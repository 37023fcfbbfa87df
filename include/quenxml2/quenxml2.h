// SPDX-License-Identifier: Apache-2.0
//
// Everything that the library offers.
#ifndef QUENXML2_QUENXML2_H_
#define QUENXML2_QUENXML2_H_

#include <quenxml2/cipher.h>
#include <quenxml2/convenience.h>
#include <quenxml2/data.h>
#include <quenxml2/dom.h>
#include <quenxml2/exceptions.h>
#include <quenxml2/message.h>
#include <quenxml2/message_base.h>
#include <quenxml2/narrow.h>
#include <quenxml2/types.h>
#include <quenxml2/utils.h>
#include <quenxml2/version.h>
#include <quenxml2/xsl.h>

#endif  // QUENXML2_QUENXML2_H_
