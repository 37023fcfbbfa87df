// SPDX-License-Identifier: Apache-2.0
//
// The narrow classes: the whole library in UTF-8.
//
// Every class ...2w has a twin ...2 with the same operations under the same names, in the same
// order and with the same meaning: string stands for wstring, a narrow class for a wide one. Who
// knows a wide class knows its twin. What the headers here say is only where a twin differs.
//
//   quen::CQuenXMLData2 order("<order><item qty='3'>Grüße</item></order>");
//   order.SetData("nut", "/order/item");
//   order.CreateNodes("/order/item[qty='4']");
//   std::int32_t quantity = 0;
//   try {
//     order.GetAttr("qty", quantity, "/order/item[2]");
//   } catch (const quen::CQuenXMLException2& failure) {
//     std::cerr << failure;
//   }
//
// Text is UTF-8, whatever the locale, in arguments and in results: values, names, paths, XML text,
// keys, file names. An argument that is not well-formed (a sequence that is overlong, cut off, a
// surrogate, or above U+10FFFF) raises the failure of the transcoding, and nothing has changed
// then. So does a result that UTF-8 cannot carry, a lone surrogate that the tree was given by a
// wide class; nothing is replaced and nothing is cut. Texts end at their first zero byte, but all
// of their bytes are checked. A std::string that a wide operation takes is passed on as it is:
// WriteToFile of a document hands the bytes of its path to the system.
//
// Failures are CQuenXMLException2, with the code, the context and the message of the wide failure;
// the context names the wide operation. Failures that are none of the library's, std::bad_alloc
// for one, pass as they are. These operations let a CQuenXMLException2w through: GetEncryptedSubset
// of CQuenXMLDocument2, HasAttr and PathExists of CQuenXMLData2, HasHeader of CQuenXMLMsg2,
// IsValidElementName, and the assignment of nodes and of iterators. So does any operation whose
// failure has a message that UTF-8 cannot carry.
//
// Lifetime and threads are those of the wide classes: a handle owns no node and dangles when its
// document goes, and one tree belongs to one thread at a time. One thing differs: the reference
// that an iterator gives lives until its next dereference.
//
// A narrow call costs the wide one, one pass over its text, and one allocation for each handle.
#ifndef QUENXML2_NARROW_H_
#define QUENXML2_NARROW_H_

#include <quenxml2/narrow_data.h>
#include <quenxml2/narrow_dom.h>
#include <quenxml2/utils.h>

#endif  // QUENXML2_NARROW_H_
