// SPDX-License-Identifier: Apache-2.0
//
// Files and their "file:" URLs. Percent signs in a URL stand for bytes; paths are UTF-8.
#ifndef QUENXML2_FOUNDATION_FILE_URL_H_
#define QUENXML2_FOUNDATION_FILE_URL_H_

#include <quenxml2/types.h>
#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class XMLURL;
XERCES_CPP_NAMESPACE_END

namespace quen::internal {

// The file that a "file:" URL names.
string PathOfFileUrl(const xercesc::XMLURL& inUrl);

// The URL of a file. A relative path is taken from the working directory as it is now.
wstring FileUrlOfPath(const string& inPath);

}  // namespace quen::internal

#endif  // QUENXML2_FOUNDATION_FILE_URL_H_
