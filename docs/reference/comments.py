#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""comments.py HEADER: writes the header with its plain comments as comments that Doxygen reads.

- The comment at the top is that of the file.
- A comment over several declarations of one name is that of each of them.
- A narrow class takes the comments that it lacks from its wide twin, in its own names; a wide one of the
  base messages takes them from the narrow one, which is the first there.
- What is protected is for the library's own classes, and left out.
- A copy constructor, a copy assignment and a destructor need no comment.
"""
import pathlib
import re
import sys

COMMENT = re.compile(r"\s*//")
CLASS = re.compile(r"(?:class|struct)\s+(?:QUENXML2_API\s+)?([\w:]+)\s*(?::[^:;].*)?\{")
WIDE_HEADERS = {"narrow_data.h": "data.h", "narrow_dom.h": "dom.h"}
# Beside the wide twins: classes whose operations mean what those of another class mean.
LENDERS = {"CQuenXMLDataImpl2w": "CQuenXMLData2", "CQuenCryptoExceptionw": "CQuenException"}
TRAITS = re.compile(r"^\s*using (iterator_category|value_type|difference_type|pointer|reference) =")


def pieces(lines):
    """The header as (comment, code, class) by declaration; the lines of comment and code as they stand."""
    comment, code, scopes = [], [], []
    for line in lines:
        if COMMENT.match(line) and not code:
            comment.append(line)
            continue
        code.append(line)
        bare = re.sub(r"//.*", "", " ".join(code)).strip()
        head = CLASS.search(bare)
        if bare and not re.search(r"[;{}]$|^(public|protected|private):$|^#|^[A-Z_]+$", bare):
            continue  # goes on
        yield comment, code, scopes[-1] if scopes else ""
        if bare.endswith("{"):
            scopes.append(head.group(1) if head else scopes[-1] if scopes else "")
        elif bare.startswith("}") and scopes:
            scopes.pop()
        comment, code = [], []
    if comment or code:
        yield comment, code, ""


def name_of(code):
    """The name that the code declares, or None."""
    text = re.sub(r"\s+", " ", re.sub(r"//.*", "", " ".join(code))).strip()
    if text.startswith(("#", "using", "friend", "}")) or not text:
        return None
    found = re.search(r"(operator\s*(?:\(\)|\[\]|[^\w\s(]+)|~?\w+)\s*\(", text)
    if not found or text.startswith(("class ", "struct ", "enum ")):
        return None
    return found.group(1)


def narrowed(text):
    text = re.sub(r"\b(CQuen\w*?2)w\b", r"\1", text)
    text = re.sub(r"\b(CQuenMessage|CQuenException)w\b", r"\1", text)
    return re.sub(r'\bu"', '"', re.sub(r"\bchar16_t\b", "char", re.sub(r"\bwstring\b", "string", text)))


def is_copy(scope, name, code):
    short = scope.split("::")[-1]
    return name in (short, "operator=") and re.search(rf"\(const {short}& \w+\)", " ".join(code)) is not None


def key_of(scope, name, code):
    """What an operation is looked up by: the same in all classes that have it in common."""
    text = re.sub(r"\s+", "", narrowed(" ".join(code).replace(name, "", 1).partition("(")[2]))
    arguments = re.sub(r"(override|noexcept|=0|;)+.*$", "", text)
    short = scope.split("::")[-1]
    # A constructor is not lent: that of a class that only resembles another may differ.
    return canonical(scope), narrowed(name) if name != short or scope not in LENDERS else name, arguments


def canonical(scope):
    return LENDERS.get(scope, narrowed(scope))


def lent_comments(headers):
    """The first comment on each operation, by what key_of gives, and by class and name alone."""
    found = {}
    for header in headers:
        last = (None, None, [])
        for comment, code, scope in pieces(header.read_text(encoding="utf-8").splitlines()):
            name = name_of(code)
            if not name:
                continue
            if not is_copy(scope, name, code):
                comment = comment or (last[2] if last[:2] == (scope, name) else [])
            last = (scope, name, comment)
            if comment:
                found.setdefault(key_of(scope, name, code), comment)
                found.setdefault((canonical(scope), narrowed(name)), comment)
    return found


def escaped(text):
    text = re.sub(r'([\\@&$#<>"%])', r"\\\1", text)
    return re.sub(r"`([^`]*)`", r"<code>\1</code>", text)


def documented(comment, first=""):
    """The comment for Doxygen: what is indented is code, but for lists and what goes on in them."""
    out, code, listed = ["/** " + first], False, False
    for line in comment:
        text = re.sub(r"^\s*// ?", "", line.rstrip())
        item = re.match(r"\s*- ", text)
        listed = bool(item) or (listed and text.startswith("  "))
        indented = text.startswith("  ") and not listed
        if indented and not code:
            out.append("@code{.unparsed}")
        if code and not indented and text:
            out.append("@endcode")
        code = indented or (code and not text)
        out.append(text.replace("*/", "* /") if code else escaped(text))
    if code:
        out.append("@endcode")
    return out + ["*/"]


def main():
    path = pathlib.Path(sys.argv[1])
    lines = path.read_text(encoding="utf-8").splitlines()
    if path.suffix != ".h":
        print("\n".join(lines))
        return
    wide = path.parent / WIDE_HEADERS.get(path.name, path.name)
    lent = lent_comments(dict.fromkeys([wide, path]))
    top = next(number for number, line in enumerate(lines) if not line.startswith("//"))
    out = documented(lines[1:top], f"@file {path.parent.name}/{path.name}")
    last, hidden = (None, None, []), False
    for comment, code, scope in pieces(lines[top:]):
        name, text, short = name_of(code), " ".join(code).strip(), scope.split("::")[-1]
        # Only the tree behind the data classes is there to derive from.
        if hidden and re.match(r"private:|};", text):
            out.append("/** @endcond */")
            hidden = False
        if name:
            own = comment
            comment = comment or lent.get(key_of(scope, name, code), [])
            copies = is_copy(scope, name, code)
            if not copies:
                comment = comment or (last[2] if last[:2] == (scope, name) else [])
            if not copies and name != short:
                comment = comment or lent.get((canonical(scope), narrowed(name)), [])
            if comment is not own and narrowed(scope) == scope:
                comment = [narrowed(line) for line in comment]
            if short and name == "~" + short:
                comment = ["// Destroys the object."]
            elif not comment and copies:
                comment = ["// Copies `inOther`, as the comment on the class or the header tells."]
            last = (scope, name, comment)
        elif TRAITS.match(text):
            comment = ["// What the standard library asks an iterator for."]
        if comment:
            out += documented(comment)
        out += [re.sub(r"([;,])\s*// ", r"\1  ///< ", line) for line in code]
        if text == "protected:" and scope != "CQuenXMLDataImpl2w":
            out.append("/** @cond */")
            hidden = True
    print("\n".join(out))


if __name__ == "__main__":
    try:
        main()
    except Exception:
        print("/** @file @thefilterfailed */")  # a warning, since Doxygen does not heed the exit status
        raise
