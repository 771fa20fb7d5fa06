#!/usr/bin/env python3
# Copyright Orvane. All Rights Reserved.
"""Reads the reflected declarations (UCLASS, USTRUCT, UENUM, UPROPERTY, UFUNCTION) of a module's headers and
writes, for each header, the <Header>.generated.h its GENERATED_BODY macros expand to and the <Header>.gen.cpp
that registers its classes, structs, enums and functions with the object system.

Errors are printed as "<file>(<line>): error: <message>" and make the tool exit with status 1.
"""

import argparse
import os
import re
import sys


class HeaderError(Exception):
    def __init__(self, path, line, message):
        super().__init__(message)
        self.path = path
        self.line = line
        self.message = message

    def __str__(self):
        return "%s(%d): error: %s" % (self.path, self.line, self.message)


# ------------------------------------------------------------------------------------------------
# Reading the source


class Token:
    __slots__ = ("text", "line", "kind")

    def __init__(self, text, line, kind):
        self.text = text
        self.line = line
        self.kind = kind  # "id", "num", "str", "chr", "punct"

    def __repr__(self):
        return "Token(%r, %d)" % (self.text, self.line)


class Comment:
    __slots__ = ("text", "first_line", "last_line")

    def __init__(self, text, first_line, last_line):
        self.text = text
        self.first_line = first_line
        self.last_line = last_line


def strip_comments(text):
    """Replaces comments by spaces (keeping line breaks) and returns the text and the comments."""
    out = []
    comments = []
    i = 0
    n = len(text)
    line = 1
    while i < n:
        c = text[i]
        if c == "/" and i + 1 < n and text[i + 1] == "/":
            j = text.find("\n", i)
            if j < 0:
                j = n
            comments.append(Comment(text[i:j], line, line))
            out.append(" " * (j - i))
            i = j
        elif c == "/" and i + 1 < n and text[i + 1] == "*":
            j = text.find("*/", i + 2)
            if j < 0:
                j = n - 2
            body = text[i : j + 2]
            first = line
            line += body.count("\n")
            comments.append(Comment(body, first, line))
            out.append(re.sub(r"[^\n]", " ", body))
            i = j + 2
        elif c == '"' or c == "'":
            j = i + 1
            while j < n and text[j] != c:
                if text[j] == "\\":
                    j += 1
                if j < n and text[j] == "\n":
                    line += 1
                j += 1
            out.append(text[i : j + 1])
            i = j + 1
        else:
            if c == "\n":
                line += 1
            out.append(c)
            i += 1
    return "".join(out), comments


def apply_preprocessor(path, text):
    """Blanks preprocessor lines and the branches the tool must not see; returns text and #include list."""
    lines = text.split("\n")
    includes = []
    # Each entry: (keep_this_branch, parent_active, seen_true_branch)
    stack = []
    active = True
    continued = False
    for index, raw in enumerate(lines):
        stripped = raw.strip()
        if continued:
            continued = stripped.endswith("\\")
            lines[index] = ""
            continue
        if stripped.startswith("#"):
            continued = stripped.endswith("\\")
            directive = stripped[1:].strip()
            word = directive.split(None, 1)[0] if directive else ""
            rest = directive[len(word) :].strip()
            if word in ("if", "ifdef", "ifndef"):
                keep = True
                if word == "if":
                    condition = rest.replace(" ", "")
                    if condition in ("0", "CPP"):
                        keep = False
                stack.append((keep, active))
                active = active and keep
            elif word == "elif":
                keep, parent = stack[-1]
                stack[-1] = (False, parent)
                active = False
            elif word == "else":
                keep, parent = stack[-1]
                stack[-1] = (not keep, parent)
                active = parent and not keep
            elif word == "endif":
                if not stack:
                    raise HeaderError(path, index + 1, "#endif without #if")
                keep, parent = stack.pop()
                active = parent
            elif word == "include" and active:
                match = re.match(r'["<]([^">]+)[">]', rest)
                if match:
                    includes.append((index + 1, match.group(1)))
            lines[index] = ""
            continue
        if not active:
            lines[index] = ""
    return "\n".join(lines), includes


TOKEN_RE = re.compile(
    r"""
    (?P<ws>[ \t\r\f\v]+)
  | (?P<nl>\n)
  | (?P<id>[A-Za-z_][A-Za-z0-9_]*)
  | (?P<num>(?:0[xX][0-9A-Fa-f']+|\d[\d']*(?:\.\d*)?(?:[eE][+-]?\d+)?|\.\d+(?:[eE][+-]?\d+)?)[uUlLfF]*)
  | (?P<str>(?:u8|u|U|L)?"(?:\\.|[^"\\])*")
  | (?P<chr>'(?:\\.|[^'\\])')
  | (?P<punct>::|->|\.\.\.|[{}()\[\]<>;:,=*&~!+\-/%^|?.#])
    """,
    re.VERBOSE,
)


def tokenize(path, text):
    tokens = []
    line = 1
    pos = 0
    n = len(text)
    while pos < n:
        match = TOKEN_RE.match(text, pos)
        if not match:
            raise HeaderError(path, line, "Unexpected character '%s'" % text[pos])
        kind = match.lastgroup
        value = match.group(kind)
        if kind == "nl":
            line += 1
        elif kind != "ws":
            tokens.append(Token(value, line, kind))
        pos = match.end()
    return tokens


# ------------------------------------------------------------------------------------------------
# Reflected declarations


class Specifier:
    def __init__(self, name, value, line):
        self.name = name
        self.value = value  # None, a string, or a list of (key, value) pairs
        self.line = line


class PropertyDecl:
    def __init__(self):
        self.name = ""
        self.type = None
        self.specifiers = []
        self.meta = []
        self.line = 0
        self.decl_line = 0
        self.access = "public"
        self.bitfield = False
        self.array_dim = None
        self.tooltip = None


class ParamDecl:
    def __init__(self):
        self.name = ""
        self.type = None
        self.text = ""
        self.default = None
        self.is_out = False
        self.is_const_ref = False
        self.is_ref_param = False


class FunctionDecl:
    def __init__(self):
        self.name = ""
        self.return_type = None
        self.return_text = ""
        self.params = []
        self.specifiers = []
        self.meta = []
        self.line = 0
        self.access = "public"
        self.is_static = False
        self.is_const = False
        self.is_virtual = False
        self.tooltip = None


class ClassDecl:
    def __init__(self):
        self.kind = "class"  # "class" or "struct"
        self.name = ""
        self.base = None
        self.api = None
        self.specifiers = []
        self.meta = []
        self.line = 0
        self.body_line = None
        self.body_kind = None  # "GENERATED_BODY", "GENERATED_UCLASS_BODY"...
        self.properties = []
        self.functions = []
        self.has_default_ctor = False
        self.has_initializer_ctor = False
        self.has_any_ctor = False
        self.implementations = set()
        self.has_add_referenced_objects = False
        self.noexport = False
        self.tooltip = None


class EnumeratorDecl:
    def __init__(self, name, line):
        self.name = name
        self.line = line
        self.meta = []


class EnumDecl:
    def __init__(self):
        self.name = ""
        self.cpp_form = "Regular"
        self.underlying = None
        self.enumerators = []
        self.specifiers = []
        self.meta = []
        self.line = 0
        self.tooltip = None


CLASS_SPECIFIERS = {
    "abstract", "blueprintable", "notblueprintable", "blueprinttype", "notblueprinttype", "config", "defaultconfig",
    "globaluserconfig", "projectuserconfig", "perobjectconfig", "configdonotcheckdefaults", "transient",
    "nontransient", "optional", "minimalapi", "const", "deprecated", "hidden", "hidedropdown", "placeable",
    "notplaceable", "editinlinenew", "noteditinlinenew", "collapsecategories", "dontcollapsecategories",
    "defaulttoinstanced", "within", "classgroup", "hidecategories", "showcategories", "autoexpandcategories",
    "autocollapsecategories", "prioritizecategories", "hidefunctions", "showfunctions", "componentwrapperclass",
    "advancedclassdisplay", "customconstructor", "intrinsic", "noexport", "meta", "sparseclassdatatypes",
    "customfieldnotify", "conversionroot", "experimental", "earlyaccesspreview", "matchedserializers",
    "perplatformconfig", "displayname",
}
STRUCT_SPECIFIERS = {
    "blueprinttype", "notblueprinttype", "atomic", "immutable", "noexport", "meta", "hasdefaults",
    "hasnoopconstructor", "isalwaysaccessible", "iscoretype", "displayname",
}
ENUM_SPECIFIERS = {"blueprinttype", "flags", "meta", "displayname"}
PROPERTY_SPECIFIERS = {
    "editanywhere", "editdefaultsonly", "editinstanceonly", "visibleanywhere", "visibledefaultsonly",
    "visibleinstanceonly", "blueprintreadwrite", "blueprintreadonly", "blueprintassignable", "blueprintcallable",
    "blueprintauthorityonly", "blueprintgetter", "blueprintsetter", "config", "globalconfig", "transient",
    "duplicatetransient", "textexporttransient", "nonpieduplicatetransient", "savegame", "instanced", "export",
    "noclear", "editfixedsize", "interp", "nontransactional", "simpledisplay", "advanceddisplay",
    "assetregistrysearchable", "replicated", "replicatedusing", "notreplicated", "category", "meta", "localized",
    "skipserialization", "setter", "getter", "fieldnotify", "editinline", "displayname",
}
FUNCTION_SPECIFIERS = {
    "blueprintcallable", "blueprintpure", "blueprintimplementableevent", "blueprintnativeevent", "callineditor",
    "exec", "category", "meta", "blueprintauthorityonly", "blueprintcosmetic", "sealedevent", "server", "client",
    "netmulticast", "reliable", "unreliable", "withvalidation", "customthunk", "blueprintgetter", "blueprintsetter",
    "serviceresquest", "servicerequest", "serviceresponse", "fieldnotify", "displayname", "blueprintinternaluseonly",
}


class Parser:
    def __init__(self, path, rel_path, text):
        self.path = path
        self.rel_path = rel_path
        stripped, self.comments = strip_comments(text)
        self.comments_by_last_line = {}
        for comment in self.comments:
            self.comments_by_last_line.setdefault(comment.last_line, []).append(comment)
        self.source_lines = stripped.split("\n")
        visible, self.includes = apply_preprocessor(path, stripped)
        self.tokens = tokenize(path, visible)
        self.pos = 0
        self.classes = []
        self.enums = []
        self.generated_include_line = None

    # Token helpers

    def error(self, line, message):
        raise HeaderError(self.path, line, message)

    def peek(self, offset=0):
        index = self.pos + offset
        return self.tokens[index] if index < len(self.tokens) else None

    def next(self):
        token = self.peek()
        if token is None:
            last = self.tokens[-1].line if self.tokens else 1
            self.error(last, "Unexpected end of file")
        self.pos += 1
        return token

    def expect(self, text):
        token = self.next()
        if token.text != text:
            self.error(token.line, "Expected '%s' but found '%s'" % (text, token.text))
        return token

    def balanced(self, open_text, close_text):
        """Reads tokens after an opening bracket up to its match; returns the inner tokens."""
        depth = 1
        inner = []
        while True:
            token = self.next()
            if token.text == open_text:
                depth += 1
            elif token.text == close_text:
                depth -= 1
                if depth == 0:
                    return inner
            inner.append(token)

    def tooltip_before(self, line):
        """The comment that ends on the line before `line` (or just above it), cleaned up as a tooltip."""
        search = line - 1
        while search > 0:
            comments = self.comments_by_last_line.get(search)
            if comments:
                texts = []
                # Consecutive // lines form one comment.
                first = comments[-1]
                block = [first]
                probe = first.first_line - 1
                while first.text.startswith("//") and probe in self.comments_by_last_line:
                    previous = self.comments_by_last_line[probe][-1]
                    if not previous.text.startswith("//"):
                        break
                    block.insert(0, previous)
                    probe -= 1
                for comment in block:
                    body = comment.text
                    if body.startswith("/*"):
                        body = body[2:-2]
                        body = body.lstrip("*")
                    else:
                        body = body[2:]
                        body = body.lstrip("/")
                    for text_line in body.split("\n"):
                        text_line = text_line.strip()
                        if text_line.startswith("*"):
                            text_line = text_line[1:].strip()
                        if text_line:
                            texts.append(text_line)
                return "\n".join(texts) if texts else None
            source = self.source_lines[search - 1].strip() if search - 1 < len(self.source_lines) else ""
            if source and not re.match(r"^(UCLASS|USTRUCT|UENUM|UPROPERTY|UFUNCTION)\b", source):
                return None
            search -= 1
        return None

    # Specifiers

    def parse_specifiers(self, tokens, line):
        """Parses "A, B = x, meta = (K = "v", F)" into specifiers."""
        groups = []
        current = []
        depth = 0
        for token in tokens:
            if token.text == "(":
                depth += 1
            elif token.text == ")":
                depth -= 1
            if token.text == "," and depth == 0:
                groups.append(current)
                current = []
            else:
                current.append(token)
        if current:
            groups.append(current)
        result = []
        for group in groups:
            if not group:
                continue
            name_token = group[0]
            if name_token.kind not in ("id", "str"):
                self.error(name_token.line, "Malformed specifier '%s'" % name_token.text)
            name = unquote(name_token.text) if name_token.kind == "str" else name_token.text
            if len(group) == 1:
                result.append(Specifier(name, None, name_token.line))
                continue
            if group[1].text != "=":
                self.error(group[1].line, "Expected '=' after specifier '%s'" % name)
            value_tokens = group[2:]
            if not value_tokens:
                self.error(group[1].line, "Missing value of specifier '%s'" % name)
            if value_tokens[0].text == "(":
                if value_tokens[-1].text != ")":
                    self.error(value_tokens[0].line, "Unbalanced parentheses in specifier '%s'" % name)
                inner = value_tokens[1:-1]
                pairs = []
                for sub in self.parse_specifiers(inner, line):
                    pairs.append((sub.name, sub.value if isinstance(sub.value, str) else ("" if sub.value is None else sub.value)))
                result.append(Specifier(name, pairs, name_token.line))
            else:
                text = "".join(
                    unquote(t.text) if t.kind == "str" else t.text for t in value_tokens
                )
                result.append(Specifier(name, text, name_token.line))
        return result

    def split_meta(self, specifiers, allowed, macro):
        """Validates specifiers against the allowed set and separates meta=(...) entries."""
        plain = []
        meta = []
        for spec in specifiers:
            lower = spec.name.lower()
            if lower not in allowed:
                self.error(spec.line, "Unknown %s specifier '%s'" % (macro, spec.name))
            if lower == "meta":
                if not isinstance(spec.value, list):
                    self.error(spec.line, "meta must be a list: meta=(Key=\"Value\")")
                for key, value in spec.value:
                    meta.append((key, value if isinstance(value, str) else ""))
            elif lower == "displayname" and isinstance(spec.value, str):
                meta.append(("DisplayName", spec.value))
            else:
                plain.append(spec)
        return plain, meta

    # Top level

    def parse(self):
        while self.peek() is not None:
            token = self.next()
            if token.text == "UCLASS":
                self.parse_class(token, "class")
            elif token.text == "USTRUCT":
                self.parse_class(token, "struct")
            elif token.text == "UENUM":
                self.parse_enum(token)
            elif token.text in ("UINTERFACE", "UDELEGATE"):
                self.error(token.line, "%s is not supported by this header tool" % token.text)
            elif token.text in ("UPROPERTY", "UFUNCTION"):
                self.error(token.line, "%s outside of a UCLASS or USTRUCT" % token.text)
            elif token.text in ("GENERATED_BODY", "GENERATED_UCLASS_BODY", "GENERATED_USTRUCT_BODY"):
                self.error(token.line, "%s outside of a UCLASS or USTRUCT" % token.text)
        self.check_generated_include()

    def check_generated_include(self):
        if not self.classes and not self.enums:
            return
        base = os.path.splitext(os.path.basename(self.path))[0]
        expected = base + ".generated.h"
        found = None
        for line, include in self.includes:
            if os.path.basename(include) == expected:
                found = line
        first_type_line = min([c.line for c in self.classes] + [e.line for e in self.enums])
        if found is None:
            self.error(first_type_line, 'Missing #include "%s" (it must be the last #include)' % expected)
        last_line, last_include = self.includes[-1]
        if os.path.basename(last_include) != expected:
            self.error(
                last_line, '#include "%s" must come after every other #include, found "%s" after it' % (expected, last_include)
            )
        if found > first_type_line:
            self.error(found, '#include "%s" must come before the first reflected type' % expected)
        self.generated_include_line = found

    def parse_class(self, macro_token, kind):
        decl = ClassDecl()
        decl.kind = kind
        decl.line = macro_token.line
        decl.tooltip = self.tooltip_before(macro_token.line)
        self.expect("(")
        specs = self.parse_specifiers(self.balanced("(", ")"), macro_token.line)
        allowed = CLASS_SPECIFIERS if kind == "class" else STRUCT_SPECIFIERS
        decl.specifiers, decl.meta = self.split_meta(specs, allowed, "UCLASS" if kind == "class" else "USTRUCT")
        decl.noexport = any(s.name.lower() == "noexport" for s in decl.specifiers)
        keyword = self.next()
        if keyword.text not in ("class", "struct"):
            self.error(keyword.line, "Expected a class or struct declaration after %s" % macro_token.text)
        name_token = self.next()
        if name_token.kind == "id" and name_token.text.endswith("_API"):
            decl.api = name_token.text
            name_token = self.next()
        if name_token.kind != "id":
            self.error(name_token.line, "Expected a type name")
        decl.name = name_token.text
        token = self.next()
        if token.text == "final":
            token = self.next()
        if token.text == ":":
            bases = []
            current = []
            depth = 0
            while True:
                token = self.next()
                if token.text == "{" and depth == 0:
                    break
                if token.text == "<":
                    depth += 1
                elif token.text == ">":
                    depth -= 1
                if token.text == "," and depth == 0:
                    bases.append(current)
                    current = []
                    continue
                current.append(token)
            bases.append(current)
            first = [t.text for t in bases[0] if t.text not in ("public", "protected", "private", "virtual")]
            decl.base = "".join(first)
            if len(bases) > 1 and kind == "class":
                self.error(name_token.line, "Multiple inheritance (interfaces) is not supported by this header tool")
        elif token.text != "{":
            self.error(token.line, "Expected '{' after %s %s" % (keyword.text, decl.name))
        if kind == "class":
            self.validate_class_name(decl, name_token.line)
        elif not decl.name.startswith("F"):
            self.error(name_token.line, "Struct name '%s' must start with 'F'" % decl.name)
        self.parse_body(decl)
        if decl.body_line is None and not decl.noexport:
            self.error(decl.line, "%s %s has no GENERATED_BODY()" % (macro_token.text, decl.name))
        self.classes.append(decl)

    def validate_class_name(self, decl, line):
        if not (decl.name.startswith("U") or decl.name.startswith("A")):
            self.error(line, "Class name '%s' must start with 'U' or 'A'" % decl.name)

    def parse_body(self, decl):
        access = "private" if decl.kind == "class" else "public"
        depth = 1
        while True:
            token = self.next()
            text = token.text
            if text == "{":
                depth += 1
                continue
            if text == "}":
                depth -= 1
                if depth == 0:
                    nxt = self.peek()
                    if nxt is not None and nxt.text == ";":
                        self.next()
                    return
                continue
            if depth != 1:
                if text in ("UPROPERTY", "UFUNCTION"):
                    self.error(token.line, "%s inside a nested scope is not supported" % text)
                continue
            if text in ("public", "protected", "private") and self.peek() is not None and self.peek().text == ":":
                self.next()
                access = text
            elif text in ("GENERATED_BODY", "GENERATED_UCLASS_BODY", "GENERATED_USTRUCT_BODY", "GENERATED_BODY_LEGACY"):
                self.expect("(")
                self.balanced("(", ")")
                if decl.body_line is not None:
                    self.error(token.line, "%s appears twice in %s" % (text, decl.name))
                decl.body_line = token.line
                decl.body_kind = text
                if text == "GENERATED_UCLASS_BODY":
                    access = "public"
            elif text == "UPROPERTY":
                decl.properties.append(self.parse_property(token, access))
            elif text == "UFUNCTION":
                if decl.kind != "class":
                    self.error(token.line, "UFUNCTION is only allowed in a UCLASS")
                decl.functions.append(self.parse_function(token, access))
            elif text == decl.name and self.peek() is not None and self.peek().text == "(":
                previous = self.tokens[self.pos - 2] if self.pos >= 2 else None
                if previous is not None and previous.text == "~":
                    continue
                self.next()
                params = self.balanced("(", ")")
                decl.has_any_ctor = True
                texts = [t.text for t in params]
                if not texts or texts == ["void"]:
                    decl.has_default_ctor = True
                elif "FObjectInitializer" in texts:
                    decl.has_initializer_ctor = True
                elif all_params_defaulted(params):
                    decl.has_default_ctor = True
            elif text.endswith("_Implementation") and self.peek() is not None and self.peek().text == "(":
                decl.implementations.add(text[: -len("_Implementation")])
            elif text == "AddReferencedObjects" and self.peek() is not None and self.peek().text == "(":
                decl.has_add_referenced_objects = True

    def parse_property(self, macro_token, access):
        prop = PropertyDecl()
        prop.line = macro_token.line
        prop.access = access
        prop.tooltip = self.tooltip_before(macro_token.line)
        self.expect("(")
        specs = self.parse_specifiers(self.balanced("(", ")"), macro_token.line)
        prop.specifiers, prop.meta = self.split_meta(specs, PROPERTY_SPECIFIERS, "UPROPERTY")
        decl_tokens = []
        depth = 0
        while True:
            token = self.next()
            if token.text in ("(", "{", "["):
                depth += 1
            elif token.text in (")", "}", "]"):
                depth -= 1
            if token.text == ";" and depth == 0:
                break
            decl_tokens.append(token)
        if not decl_tokens:
            self.error(macro_token.line, "UPROPERTY without a declaration")
        # Cut the initializer and the bitfield width.
        cut = len(decl_tokens)
        depth = 0
        for index, token in enumerate(decl_tokens):
            if token.text in ("<", "(", "["):
                depth += 1
            elif token.text in (">", ")", "]"):
                depth -= 1
            elif depth == 0 and token.text in ("=", "{"):
                cut = index
                break
            elif depth == 0 and token.text == ":":
                prop.bitfield = True
                cut = index
                break
        tokens = decl_tokens[:cut]
        if tokens and tokens[-1].text == "]":
            open_index = max(i for i, t in enumerate(tokens) if t.text == "[")
            prop.array_dim = "".join(t.text for t in tokens[open_index + 1 : -1])
            tokens = tokens[:open_index]
        if not tokens or tokens[-1].kind != "id":
            self.error(macro_token.line, "Cannot read the property declaration")
        prop.name = tokens[-1].text
        prop.decl_line = tokens[-1].line
        type_tokens = [t for t in tokens[:-1] if t.text not in ("mutable",)]
        if any(t.text == "static" for t in type_tokens):
            self.error(tokens[-1].line, "Static members cannot be UPROPERTYs")
        prop.type = parse_type(self, type_tokens, tokens[-1].line)
        return prop

    def parse_function(self, macro_token, access):
        func = FunctionDecl()
        func.line = macro_token.line
        func.access = access
        func.tooltip = self.tooltip_before(macro_token.line)
        self.expect("(")
        specs = self.parse_specifiers(self.balanced("(", ")"), macro_token.line)
        func.specifiers, func.meta = self.split_meta(specs, FUNCTION_SPECIFIERS, "UFUNCTION")
        head = []
        while True:
            token = self.next()
            if token.text == "(":
                break
            if token.text in (";", "{", "}"):
                self.error(token.line, "Expected a function declaration after UFUNCTION")
            head.append(token)
        params = self.balanced("(", ")")
        # Trailing qualifiers and an optional body.
        while True:
            token = self.next()
            if token.text == ";":
                break
            if token.text == "{":
                self.balanced("{", "}")
                break
            if token.text == "const":
                func.is_const = True
        qualifiers = {"static", "virtual", "inline", "FORCEINLINE", "explicit", "constexpr", "FORCENOINLINE"}
        ret = []
        for token in head[:-1]:
            if token.text == "static":
                func.is_static = True
            elif token.text == "virtual":
                func.is_virtual = True
            elif token.text in qualifiers or (token.kind == "id" and token.text.endswith("_API")):
                continue
            else:
                ret.append(token)
        if not head or head[-1].kind != "id":
            self.error(macro_token.line, "Cannot read the function declaration")
        func.name = head[-1].text
        func.return_text = " ".join(t.text for t in ret)
        func.return_type = parse_type(self, ret, head[-1].line) if func.return_text != "void" else None
        for group in split_top_level(params):
            if not group or [t.text for t in group] == ["void"]:
                continue
            func.params.append(self.parse_param(group))
        return func

    def parse_param(self, tokens):
        param = ParamDecl()
        if tokens[0].text == "UPARAM":
            close = find_matching(tokens, 1)
            specs = self.parse_specifiers(tokens[2:close], tokens[0].line)
            for spec in specs:
                if spec.name.lower() == "ref":
                    param.is_ref_param = True
                elif spec.name.lower() not in ("displayname", "meta", "required"):
                    self.error(spec.line, "Unknown UPARAM specifier '%s'" % spec.name)
            tokens = tokens[close + 1 :]
        for index, token in enumerate(tokens):
            if token.text == "=":
                param.default = " ".join(t.text for t in tokens[index + 1 :])
                tokens = tokens[:index]
                break
        if not tokens or tokens[-1].kind != "id":
            self.error(tokens[0].line if tokens else 0, "Parameters of a UFUNCTION must be named")
        param.name = tokens[-1].text
        param.text = " ".join(t.text for t in tokens)
        type_tokens = tokens[:-1]
        param.type = parse_type(self, type_tokens, tokens[-1].line)
        if param.type.is_ref:
            if param.type.is_const and not param.is_ref_param:
                param.is_const_ref = True
            else:
                param.is_out = True
        return param

    def parse_enum(self, macro_token):
        decl = EnumDecl()
        decl.line = macro_token.line
        decl.tooltip = self.tooltip_before(macro_token.line)
        self.expect("(")
        specs = self.parse_specifiers(self.balanced("(", ")"), macro_token.line)
        decl.specifiers, decl.meta = self.split_meta(specs, ENUM_SPECIFIERS, "UENUM")
        token = self.next()
        if token.text == "namespace":
            decl.cpp_form = "Namespaced"
            decl.name = self.next().text
            self.expect("{")
            self.expect("enum")
            type_name = self.next()
            if type_name.text != "Type":
                self.error(type_name.line, "A namespaced UENUM must declare 'enum Type'")
            token = self.next()
            if token.text == ":":
                decl.underlying = self.next().text
                token = self.next()
            if token.text != "{":
                self.error(token.line, "Expected '{'")
            self.parse_enumerators(decl)
            self.expect(";")
            self.expect("}")
        elif token.text == "enum":
            token = self.next()
            if token.text in ("class", "struct"):
                decl.cpp_form = "EnumClass"
                token = self.next()
            decl.name = token.text
            token = self.next()
            if token.text == ":":
                decl.underlying = self.next().text
                token = self.next()
            if token.text != "{":
                self.error(token.line, "Expected '{' after enum %s" % decl.name)
            self.parse_enumerators(decl)
            self.expect(";")
        else:
            self.error(token.line, "Expected an enum declaration after UENUM")
        if not decl.name.startswith("E"):
            self.error(decl.line, "Enum name '%s' must start with 'E'" % decl.name)
        self.enums.append(decl)

    def parse_enumerators(self, decl):
        groups = split_top_level(self.balanced("{", "}"))
        for group in groups:
            if not group:
                continue
            enumerator = EnumeratorDecl(group[0].text, group[0].line)
            if group[0].kind != "id":
                self.error(group[0].line, "Expected an enumerator name")
            for index, token in enumerate(group):
                if token.text == "UMETA":
                    close = find_matching(group, index + 1)
                    for spec in self.parse_specifiers(group[index + 2 : close], token.line):
                        value = spec.value if isinstance(spec.value, str) else ""
                        enumerator.meta.append((spec.name, value))
            decl.enumerators.append(enumerator)


def all_params_defaulted(tokens):
    groups = split_top_level(tokens)
    return all(any(t.text == "=" for t in group) for group in groups if group)


def split_top_level(tokens):
    groups = []
    current = []
    depth = 0
    for token in tokens:
        if token.text in ("(", "<", "[", "{"):
            depth += 1
        elif token.text in (")", ">", "]", "}"):
            depth -= 1
        if token.text == "," and depth == 0:
            groups.append(current)
            current = []
        else:
            current.append(token)
    groups.append(current)
    return groups


def find_matching(tokens, open_index):
    depth = 0
    for index in range(open_index, len(tokens)):
        if tokens[index].text == "(":
            depth += 1
        elif tokens[index].text == ")":
            depth -= 1
            if depth == 0:
                return index
    raise HeaderError("", tokens[open_index].line, "Unbalanced parentheses")


def unquote(text):
    if text.startswith(("u8\"", "u\"", "U\"", "L\"")):
        text = text[text.index('"') :]
    if text.startswith('"') and text.endswith('"'):
        return text[1:-1]
    return text


# ------------------------------------------------------------------------------------------------
# Types


class TypeNode:
    def __init__(self, name):
        self.name = name
        self.args = []
        self.pointer = 0
        self.is_ref = False
        self.is_const = False

    def cpp(self):
        text = self.name
        if self.args:
            text += "<" + ", ".join(arg.cpp() for arg in self.args) + ">"
        return text + "*" * self.pointer

    def value_cpp(self):
        """The type as stored in a parameter block (no const, no reference)."""
        return self.cpp()


def parse_type(parser, tokens, line):
    tokens = [t for t in tokens if t.text not in ("class", "struct", "enum", "typename")]
    if not tokens:
        parser.error(line, "Missing type")
    node, rest = _parse_type(parser, tokens, 0, line)
    if rest != len(tokens):
        parser.error(line, "Cannot read the type '%s'" % " ".join(t.text for t in tokens))
    return node


def _parse_type(parser, tokens, index, line):
    is_const = False
    while index < len(tokens) and tokens[index].text in ("const", "volatile"):
        is_const = True
        index += 1
    if index >= len(tokens):
        parser.error(line, "Missing type")
    name_parts = []
    while index < len(tokens):
        token = tokens[index]
        if token.kind == "id" and token.text not in ("const",):
            name_parts.append(token.text)
            index += 1
            if index < len(tokens) and tokens[index].text == "::":
                name_parts.append("::")
                index += 1
                continue
            # "unsigned int" and friends.
            if index < len(tokens) and tokens[index].kind == "id" and name_parts[-1] in ("unsigned", "signed", "long", "short"):
                name_parts.append(" ")
                continue
            break
        else:
            break
    if not name_parts:
        parser.error(line, "Cannot read the type near '%s'" % tokens[index].text)
    node = TypeNode("".join(name_parts))
    node.is_const = is_const
    if index < len(tokens) and tokens[index].text == "<":
        index += 1
        while True:
            arg, index = _parse_type(parser, tokens, index, line)
            node.args.append(arg)
            if index >= len(tokens):
                parser.error(line, "Unterminated template argument list")
            if tokens[index].text == ",":
                index += 1
                continue
            if tokens[index].text == ">":
                index += 1
                break
            parser.error(line, "Unexpected '%s' in template arguments" % tokens[index].text)
    while index < len(tokens) and tokens[index].text in ("*", "&", "const"):
        if tokens[index].text == "*":
            node.pointer += 1
        elif tokens[index].text == "&":
            node.is_ref = True
        else:
            node.is_const = True
        index += 1
    return node, index


INTEGER_KINDS = {
    "int8": "Int8", "int16": "Int16", "int32": "Int", "int": "Int", "int64": "Int64", "uint8": "Byte",
    "uint16": "UInt16", "uint32": "UInt32", "uint64": "UInt64", "float": "Float", "double": "Double",
}


class PropertyModel:
    """What the generated code needs to describe one property."""

    def __init__(self, kind):
        self.kind = kind
        self.class_func = None
        self.meta_class_func = None
        self.struct_func = None
        self.enum_func = None
        self.inner = None
        self.value_inner = None
        self.ops = None
        self.kind_expr = None  # a C++ expression overriding the kind (enum underlying types)
        self.extra_flags = []


def is_object_class_name(name):
    return len(name) > 1 and name[0] in "UA" and name[1].isupper()


def model_for_type(parser, node, line, bitfield=False, what="property"):
    name = node.name
    if bitfield:
        if name not in ("bool", "uint8", "uint16", "uint32", "uint64") or node.pointer:
            parser.error(line, "Only bool and unsigned integer bitfields of width 1 can be reflected")
        return PropertyModel("Bool")
    if node.pointer:
        if node.pointer == 1 and not node.args and is_object_class_name(name):
            if name == "UClass":
                model = PropertyModel("Class")
                model.class_func = "&UClass::StaticClass"
                model.meta_class_func = "&UObject::StaticClass"
                return model
            model = PropertyModel("Object")
            model.class_func = "&%s::StaticClass" % name
            return model
        parser.error(line, "Unsupported %s type '%s'" % (what, node.cpp()))
    if name == "bool":
        return PropertyModel("Bool")
    if name in INTEGER_KINDS:
        return PropertyModel(INTEGER_KINDS[name])
    if name == "FName":
        return PropertyModel("Name")
    if name == "FString":
        return PropertyModel("Str")
    if name == "FText":
        return PropertyModel("Text")
    if name == "TEnumAsByte":
        model = PropertyModel("Byte")
        model.enum_func = "[]() -> UEnum* { return StaticEnum<%s>(); }" % node.args[0].cpp()
        return model
    if name == "TObjectPtr":
        target = node.args[0].name
        if target == "UClass":
            model = PropertyModel("Class")
            model.class_func = "&UClass::StaticClass"
            model.meta_class_func = "&UObject::StaticClass"
            return model
        model = PropertyModel("Object")
        model.class_func = "&%s::StaticClass" % target
        return model
    if name == "TSubclassOf":
        model = PropertyModel("Class")
        model.class_func = "&UClass::StaticClass"
        model.meta_class_func = "&%s::StaticClass" % node.args[0].name
        model.extra_flags.append("CPF_UObjectWrapper")
        return model
    if name == "TWeakObjectPtr":
        model = PropertyModel("WeakObject")
        model.class_func = "&%s::StaticClass" % node.args[0].name
        return model
    if name == "TSoftObjectPtr":
        model = PropertyModel("SoftObject")
        target = node.args[0].name if node.args else "UObject"
        model.class_func = "&%s::StaticClass" % target
        model.ops = "&UE::CoreUObject::Private::TSoftObjectValueOps<%s>::Ops" % node.cpp()
        return model
    if name == "TSoftClassPtr":
        model = PropertyModel("SoftClass")
        target = node.args[0].name if node.args else "UObject"
        model.class_func = "&UClass::StaticClass"
        model.meta_class_func = "&%s::StaticClass" % target
        model.ops = "&UE::CoreUObject::Private::TSoftObjectValueOps<%s>::Ops" % node.cpp()
        return model
    if name == "TArray":
        if len(node.args) != 1:
            parser.error(line, "TArray with a custom allocator cannot be reflected")
        model = PropertyModel("Array")
        model.inner = (node.args[0], model_for_type(parser, node.args[0], line, what=what))
        return model
    if name == "TSet":
        model = PropertyModel("Set")
        model.inner = (node.args[0], model_for_type(parser, node.args[0], line, what=what))
        model.ops = "&UE::CoreUObject::Private::TSetOps<%s>::Ops" % node.cpp()
        return model
    if name == "TMap":
        if len(node.args) != 2:
            parser.error(line, "TMap needs a key and a value type")
        model = PropertyModel("Map")
        model.inner = (node.args[0], model_for_type(parser, node.args[0], line, what=what))
        model.value_inner = (node.args[1], model_for_type(parser, node.args[1], line, what=what))
        model.ops = "&UE::CoreUObject::Private::TMapOps<%s>::Ops" % node.cpp()
        return model
    if node.args:
        parser.error(line, "Unsupported %s type '%s'" % (what, node.cpp()))
    short = name.split("::")[-1]
    if short.startswith("E") and "::" not in name:
        model = PropertyModel("Enum")
        model.enum_func = "[]() -> UEnum* { return StaticEnum<%s>(); }" % name
        underlying = PropertyModel(None)
        underlying.kind_expr = "UE::CoreUObject::Private::EnumUnderlyingKindOf<%s>()" % name
        model.inner = (None, underlying)
        return model
    if short.startswith("F") and len(short) > 1 and short[1].isupper():
        model = PropertyModel("Struct")
        model.struct_func = "[]() -> UScriptStruct* { return StaticStruct<%s>(); }" % name
        return model
    parser.error(line, "Unsupported %s type '%s'" % (what, node.cpp()))


# ------------------------------------------------------------------------------------------------
# Flags


def class_flags(parser, decl):
    flags = ["CLASS_Native"]
    config = None
    within = None
    meta = list(decl.meta)
    for spec in decl.specifiers:
        lower = spec.name.lower()
        simple = {
            "abstract": "CLASS_Abstract", "defaultconfig": "CLASS_DefaultConfig",
            "globaluserconfig": "CLASS_GlobalUserConfig", "projectuserconfig": "CLASS_ProjectUserConfig",
            "perobjectconfig": "CLASS_PerObjectConfig", "configdonotcheckdefaults": "CLASS_ConfigDoNotCheckDefaults",
            "transient": "CLASS_Transient", "optional": "CLASS_Optional", "minimalapi": "CLASS_MinimalAPI",
            "const": "CLASS_Const", "deprecated": "CLASS_Deprecated", "hidden": "CLASS_Hidden",
            "hidedropdown": "CLASS_HideDropDown", "notplaceable": "CLASS_NotPlaceable",
            "editinlinenew": "CLASS_EditInlineNew", "collapsecategories": "CLASS_CollapseCategories",
            "defaulttoinstanced": "CLASS_DefaultToInstanced", "matchedserializers": "CLASS_MatchedSerializers",
            "perplatformconfig": "CLASS_PerPlatformConfig",
        }
        if lower in simple:
            flags.append(simple[lower])
        elif lower == "config":
            if not isinstance(spec.value, str) or not spec.value:
                parser.error(spec.line, "config needs a name: config=Engine")
            config = spec.value
        elif lower == "within":
            within = spec.value
        elif lower == "blueprinttype":
            meta.append(("BlueprintType", "true"))
        elif lower == "notblueprinttype":
            meta.append(("NotBlueprintType", "true"))
        elif lower == "blueprintable":
            meta.append(("IsBlueprintBase", "true"))
            meta.append(("BlueprintType", "true"))
        elif lower == "notblueprintable":
            meta.append(("IsBlueprintBase", "false"))
        elif lower == "classgroup":
            meta.append(("ClassGroupNames", list_value(spec.value)))
        elif lower in ("hidecategories", "showcategories", "autoexpandcategories", "autocollapsecategories", "hidefunctions"):
            names = {"hidecategories": "HideCategories", "showcategories": "ShowCategories",
                     "autoexpandcategories": "AutoExpandCategories", "autocollapsecategories": "AutoCollapseCategories",
                     "hidefunctions": "HideFunctions"}
            meta.append((names[lower], list_value(spec.value)))
    if decl.api and "CLASS_MinimalAPI" not in flags:
        flags.append("CLASS_RequiredAPI")
    if config:
        flags.append("CLASS_Config")
    return flags, config, within, meta


def list_value(value):
    if isinstance(value, list):
        return " ".join(key for key, _ in value)
    return value or ""


def property_flags(parser, prop, is_param=False):
    flags = []
    meta = list(prop.meta)
    for spec in prop.specifiers:
        lower = spec.name.lower()
        mapping = {
            "editanywhere": ["CPF_Edit"],
            "editdefaultsonly": ["CPF_Edit", "CPF_DisableEditOnInstance"],
            "editinstanceonly": ["CPF_Edit", "CPF_DisableEditOnTemplate"],
            "visibleanywhere": ["CPF_Edit", "CPF_EditConst"],
            "visibledefaultsonly": ["CPF_Edit", "CPF_EditConst", "CPF_DisableEditOnInstance"],
            "visibleinstanceonly": ["CPF_Edit", "CPF_EditConst", "CPF_DisableEditOnTemplate"],
            "blueprintreadwrite": ["CPF_BlueprintVisible"],
            "blueprintreadonly": ["CPF_BlueprintVisible", "CPF_BlueprintReadOnly"],
            "blueprintassignable": ["CPF_BlueprintAssignable"],
            "blueprintcallable": ["CPF_BlueprintCallable"],
            "blueprintauthorityonly": ["CPF_BlueprintAuthorityOnly"],
            "config": ["CPF_Config"],
            "globalconfig": ["CPF_GlobalConfig", "CPF_Config"],
            "transient": ["CPF_Transient"],
            "duplicatetransient": ["CPF_DuplicateTransient"],
            "textexporttransient": ["CPF_TextExportTransient"],
            "nonpieduplicatetransient": ["CPF_NonPIEDuplicateTransient"],
            "savegame": ["CPF_SaveGame"],
            "instanced": ["CPF_PersistentInstance", "CPF_ExportObject", "CPF_InstancedReference"],
            "export": ["CPF_ExportObject"],
            "noclear": ["CPF_NoClear"],
            "editfixedsize": ["CPF_EditFixedSize"],
            "interp": ["CPF_Edit", "CPF_BlueprintVisible", "CPF_Interp"],
            "nontransactional": ["CPF_NonTransactional"],
            "simpledisplay": ["CPF_SimpleDisplay"],
            "advanceddisplay": ["CPF_AdvancedDisplay"],
            "assetregistrysearchable": ["CPF_AssetRegistrySearchable"],
            "replicated": ["CPF_Net"],
            "replicatedusing": ["CPF_Net", "CPF_RepNotify"],
            "notreplicated": ["CPF_RepSkip"],
            "skipserialization": ["CPF_SkipSerialization"],
        }
        if lower in mapping:
            flags.extend(mapping[lower])
        elif lower == "category":
            meta.append(("Category", spec.value if isinstance(spec.value, str) else list_value(spec.value)))
        elif lower == "instanced":
            meta.append(("EditInline", "true"))
        elif lower == "blueprintgetter":
            meta.append(("BlueprintGetter", spec.value or ""))
        elif lower == "blueprintsetter":
            meta.append(("BlueprintSetter", spec.value or ""))
        elif lower == "replicatedusing":
            meta.append(("RepNotifyFunc", spec.value or ""))
    edit = any(s.name.lower() in ("editanywhere", "editdefaultsonly", "editinstanceonly", "visibleanywhere",
                                  "visibledefaultsonly", "visibleinstanceonly") for s in prop.specifiers)
    if sum(1 for s in prop.specifiers if s.name.lower() in ("editanywhere", "editdefaultsonly", "editinstanceonly",
                                                            "visibleanywhere", "visibledefaultsonly",
                                                            "visibleinstanceonly")) > 1:
        parser.error(prop.line, "Property '%s' has more than one edit/visibility specifier" % prop.name)
    if any(s.name.lower() == "blueprintreadwrite" for s in prop.specifiers) and any(
        s.name.lower() == "blueprintreadonly" for s in prop.specifiers
    ):
        parser.error(prop.line, "Property '%s' cannot be both BlueprintReadWrite and BlueprintReadOnly" % prop.name)
    del edit
    access_flag = {
        "public": "CPF_NativeAccessSpecifierPublic",
        "protected": "CPF_NativeAccessSpecifierProtected",
        "private": "CPF_NativeAccessSpecifierPrivate",
    }[prop.access]
    if prop.access == "protected":
        flags.append("CPF_Protected")
    flags.append(access_flag)
    unique = []
    for flag in flags:
        if flag not in unique:
            unique.append(flag)
    return unique, meta


def function_flags(parser, func):
    flags = ["FUNC_Native"]
    meta = list(func.meta)
    event = None
    for spec in func.specifiers:
        lower = spec.name.lower()
        if lower == "blueprintcallable":
            flags.append("FUNC_BlueprintCallable")
        elif lower == "blueprintpure":
            flags += ["FUNC_BlueprintCallable", "FUNC_BlueprintPure"]
        elif lower == "blueprintimplementableevent":
            event = "Implementable"
            flags += ["FUNC_Event", "FUNC_BlueprintEvent"]
        elif lower == "blueprintnativeevent":
            event = "Native"
            flags += ["FUNC_Event", "FUNC_BlueprintEvent"]
        elif lower == "callineditor":
            meta.append(("CallInEditor", "true"))
        elif lower == "exec":
            flags.append("FUNC_Exec")
        elif lower == "category":
            meta.append(("Category", spec.value if isinstance(spec.value, str) else list_value(spec.value)))
        elif lower == "blueprintauthorityonly":
            flags.append("FUNC_BlueprintAuthorityOnly")
        elif lower == "blueprintcosmetic":
            flags.append("FUNC_BlueprintCosmetic")
        elif lower == "blueprintinternaluseonly":
            meta.append(("BlueprintInternalUseOnly", "true"))
        elif lower in ("server", "client", "netmulticast", "reliable", "unreliable", "withvalidation", "customthunk",
                       "servicerequest", "serviceresponse", "serviceresquest"):
            parser.error(spec.line, "UFUNCTION specifier '%s' is not supported by this header tool" % spec.name)
    if event == "Implementable":
        flags.remove("FUNC_Native")
    if func.is_static:
        flags.append("FUNC_Static")
        if event:
            parser.error(func.line, "Blueprint events cannot be static")
    if func.is_const:
        flags.append("FUNC_Const")
    flags.append({"public": "FUNC_Public", "protected": "FUNC_Protected", "private": "FUNC_Private"}[func.access])
    if any(p.is_out for p in func.params):
        flags.append("FUNC_HasOutParms")
    if any(p.default is not None for p in func.params):
        flags.append("FUNC_HasDefaults")
    unique = []
    for flag in flags:
        if flag not in unique:
            unique.append(flag)
    return unique, meta, event


# ------------------------------------------------------------------------------------------------
# Writing


def cpp_string(text):
    return 'TEXT("%s")' % text.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n")


def cpp_source_string(text):
    """A string taken from a C++ string literal in the header: its escapes are already C++ escapes."""
    return 'TEXT("%s")' % text


def flags_expr(flags, enum_type, none):
    if not flags:
        return none
    if len(flags) == 1:
        return flags[0] if enum_type is None else "%s(%s)" % (enum_type, flags[0])
    return "%s(%s)" % (enum_type, " | ".join(flags)) if enum_type else " | ".join(flags)


class Writer:
    def __init__(self, module, api, header_path, include_path, module_rel_path, file_id):
        self.module = module
        self.api = api
        self.header_path = header_path
        self.include_path = include_path
        self.module_rel_path = module_rel_path
        self.file_id = file_id
        self.h = []
        self.cpp = []
        self.counter = 0

    def unique(self, base):
        self.counter += 1
        return "%s_%d" % (base, self.counter)

    def metadata_array(self, owner_lines, name, pairs, from_source=True):
        """Emits a metadata array; returns (array expression, count)."""
        if not pairs:
            return "nullptr", 0
        entries = []
        for key, value in pairs:
            value_expr = cpp_source_string(value) if from_source else cpp_string(value)
            entries.append("\t\t{%s, %s}," % (cpp_string(key), value_expr))
        owner_lines.append("\tstatic inline const UE::CoreUObject::Private::FMetaDataPairParam %s[] = {" % name)
        owner_lines.extend(entries)
        owner_lines.append("\t};")
        return name, len(pairs)

    def property_params(self, out, base_name, model, name, flags_list, offset_expr, array_dim, size_expr, meta,
                        set_bit=None):
        """Emits the FPropertyParams of a property (and of its inner properties); returns the variable name."""
        inner_name = "nullptr"
        value_name = "nullptr"
        if model.inner is not None:
            inner_node, inner_model = model.inner
            inner_size = "sizeof(%s)" % inner_node.cpp() if inner_node is not None else "0"
            inner_name = "&" + self.property_params(out, base_name + "_Inner", inner_model, name, [], "0", "1",
                                                     inner_size, [])
        if model.value_inner is not None:
            value_node, value_model = model.value_inner
            value_name = "&" + self.property_params(out, base_name + "_Value", value_model, name, [], "0", "1",
                                                     "sizeof(%s)" % value_node.cpp(), [])
        meta_name, meta_count = self.metadata_array(out, base_name + "_MetaData", meta)
        kind = model.kind_expr or "UE::CoreUObject::Private::EPropertyGenKind::%s" % model.kind
        all_flags = list(flags_list) + [f for f in model.extra_flags if f not in flags_list]
        fields = [
            ".Kind = %s" % kind,
            ".Name = %s" % cpp_string(name),
            ".Flags = %s" % flags_expr(all_flags, "EPropertyFlags", "CPF_None"),
            ".Offset = %s" % offset_expr,
            ".ArrayDim = %s" % array_dim,
            ".ElementSize = %s" % size_expr,
        ]
        if model.class_func:
            fields.append(".ClassFunc = %s" % model.class_func)
        if model.meta_class_func:
            fields.append(".MetaClassFunc = %s" % model.meta_class_func)
        if model.struct_func:
            fields.append(".StructFunc = %s" % model.struct_func)
        if model.enum_func:
            fields.append(".EnumFunc = %s" % model.enum_func)
        if set_bit:
            fields.append(".SetBitFunc = %s" % set_bit)
        if inner_name != "nullptr":
            fields.append(".Inner = %s" % inner_name)
        if value_name != "nullptr":
            fields.append(".ValueInner = %s" % value_name)
        if model.ops:
            fields.append(".Ops = %s" % model.ops)
        if meta_count:
            fields.append(".MetaData = %s" % meta_name)
            fields.append(".NumMetaData = %d" % meta_count)
        out.append("\tstatic inline const UE::CoreUObject::Private::FPropertyParams %s = {" % base_name)
        for field in fields:
            out.append("\t\t%s," % field)
        out.append("\t};")
        return base_name

    def common_meta(self, tooltip, meta):
        pairs = []
        if tooltip:
            pairs.append(("ToolTip", tooltip.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n")))
        pairs.extend(meta)
        pairs.append(("ModuleRelativePath", self.module_rel_path))
        return pairs


def write_enum(parser, writer, decl):
    api = writer.api
    cpp_type = decl.name + "::Type" if decl.cpp_form == "Namespaced" else decl.name
    out = writer.cpp
    prefix = "Z_Enum_%s" % decl.name
    out.append("// Enum %s" % decl.name)
    out.append("struct %s_Statics" % prefix)
    out.append("{")
    entries = []
    for enumerator in decl.enumerators:
        full = enumerator.name if decl.cpp_form == "Regular" else "%s::%s" % (decl.name, enumerator.name)
        value = "(int64)%s::%s" % (decl.name, enumerator.name) if decl.cpp_form != "Regular" else "(int64)%s" % enumerator.name
        meta = [(k, v) for k, v in enumerator.meta]
        meta_name, meta_count = writer.metadata_array(out, "%s_MetaData" % enumerator.name, meta)
        entries.append("\t\t{%s, %s, %s, %d}," % (cpp_string(full), value, meta_name, meta_count))
    out.append("\tstatic inline const UE::CoreUObject::Private::FEnumeratorParams Enumerators[] = {")
    out.extend(entries)
    out.append("\t};")
    meta = writer.common_meta(decl.tooltip, decl.meta)
    for spec in decl.specifiers:
        if spec.name.lower() == "blueprinttype":
            meta.append(("BlueprintType", "true"))
        elif spec.name.lower() == "flags":
            meta.append(("Bitflags", ""))
    meta_name, meta_count = writer.metadata_array(out, "EnumMetaData", meta)
    out.append("\tstatic inline const UE::CoreUObject::Private::FEnumParams Params = {")
    out.append("\t\t%s," % cpp_string(decl.name))
    out.append('\t\tTEXT("/Script/%s"),' % writer.module)
    out.append("\t\tUEnum::ECppForm::%s," % decl.cpp_form)
    out.append("\t\tEnumerators,")
    out.append("\t\t%d," % len(decl.enumerators))
    out.append("\t\t%s," % meta_name)
    out.append("\t\t%d," % meta_count)
    out.append("\t};")
    out.append("};")
    out.append("")
    out.append("template <>")
    out.append("%s UEnum* StaticEnum<%s>()" % (api, cpp_type))
    out.append("{")
    out.append("\tstatic UEnum* Enum = nullptr;")
    out.append("\treturn Enum ? Enum : UE::CoreUObject::Private::RegisterNativeEnum(Enum, %s_Statics::Params);" % prefix)
    out.append("}")
    out.append("")
    out.append("static UObject* %s_Register()" % prefix)
    out.append("{")
    out.append("\treturn StaticEnum<%s>();" % cpp_type)
    out.append("}")
    out.append("static UE::CoreUObject::Private::FRegisterCompiledInInfo %s_CompiledIn(&%s_Register);" % (prefix, prefix))
    out.append("")
    # Declaration visible to users of the header.
    if decl.cpp_form == "EnumClass" and decl.underlying:
        writer.h.append("enum class %s : %s;" % (decl.name, decl.underlying))
        writer.h.append("template <>")
        writer.h.append("%s UEnum* StaticEnum<%s>();" % (api, decl.name))
        writer.h.append("")


def write_property_list(parser, writer, out, owner_type, properties, size_expr_of, offset_of, owner_label):
    names = []
    for prop in properties:
        model = model_for_type(parser, prop.type, prop.decl_line, prop.bitfield)
        flags, meta = property_flags(parser, prop)
        meta = writer.common_meta(prop.tooltip, meta)
        var = "Prop_%s" % prop.name
        set_bit = None
        offset = offset_of(prop)
        size = size_expr_of(prop)
        if prop.bitfield:
            out.append("\tstatic UE_GENERATED_NO_SANITIZE_VPTR void SetBit_%s(void* Container)" % prop.name)
            out.append("\t{")
            out.append("\t\t((%s*)Container)->%s = 1;" % (owner_type, prop.name))
            out.append("\t}")
            set_bit = "&SetBit_%s" % prop.name
            offset = "0"
            size = "1"
        array_dim = "(int32)(%s)" % prop.array_dim if prop.array_dim else "1"
        writer.property_params(out, var, model, prop.name, flags, offset, array_dim, size, meta, set_bit)
        names.append(var)
    # Declaration order: the list is kept in the order of the header.
    if names:
        out.append("\tstatic inline const UE::CoreUObject::Private::FPropertyParams* const Properties[] = {")
        for name in names:
            out.append("\t\t&%s," % name)
        out.append("\t};")
    return len(names)


def write_function(parser, writer, out, decl, func, index):
    flags, meta, event = function_flags(parser, func)
    meta = writer.common_meta(func.tooltip, meta)
    parms = "Parms_%s" % func.name
    # The parameter block.
    out.append("\tstruct %s" % parms)
    out.append("\t{")
    for param in func.params:
        out.append("\t\t%s %s;" % (param.type.value_cpp(), param.name))
    if func.return_type is not None:
        out.append("\t\t%s ReturnValue;" % func.return_type.value_cpp())
    if not func.params and func.return_type is None:
        out.append("\t\tuint8 Unused = 0;")
    out.append("\t};")
    # Thunk.
    call_args = ", ".join("Parms.%s" % p.name for p in func.params)
    target = func.name + ("_Implementation" if event == "Native" else "")
    thunk = "exec%s" % func.name
    if event != "Implementable":
        out.append("\tstatic void %s(UObject* Context, FFrame& Stack, RESULT_DECL)" % thunk)
        out.append("\t{")
        out.append("\t\t%s& Parms = *(%s*)Stack.Locals;" % (parms, parms))
        if not func.params:
            out.append("\t\t(void)Parms;")
        if func.is_static:
            call = "%s::%s(%s)" % (decl.name, target, call_args)
        else:
            call = "((%s*)Context)->%s(%s)" % (decl.name, target, call_args)
        if func.return_type is not None:
            out.append("\t\t*(%s*)RESULT_PARAM = %s;" % (func.return_type.value_cpp(), call))
        else:
            out.append("\t\t%s;" % call)
        out.append("\t}")
    prop_names = []
    for param in func.params:
        model = model_for_type(parser, param.type, func.line, what="parameter")
        pflags = ["CPF_Parm"]
        if param.is_out:
            pflags.append("CPF_OutParm")
        if param.is_const_ref or param.type.is_const:
            pflags.append("CPF_ConstParm")
        if param.is_ref_param:
            pflags += ["CPF_OutParm", "CPF_ReferenceParm"]
        var = "Func%s_Param_%s" % (func.name, param.name)
        writer.property_params(out, var, model, param.name, pflags, "offsetof(%s, %s)" % (parms, param.name), "1",
                               "sizeof(%s)" % param.type.value_cpp(), [])
        prop_names.append(var)
        if param.default is not None:
            meta.append(("CPP_Default_" + param.name, param.default.replace('"', '\\"')))
    if func.return_type is not None:
        model = model_for_type(parser, func.return_type, func.line, what="return")
        var = "Func%s_ReturnValue" % func.name
        writer.property_params(out, var, model, "ReturnValue", ["CPF_Parm", "CPF_OutParm", "CPF_ReturnParm"],
                               "offsetof(%s, ReturnValue)" % parms, "1", "sizeof(%s)" % func.return_type.value_cpp(), [])
        prop_names.append(var)
    list_name = "Func%s_Properties" % func.name
    if prop_names:
        out.append("\tstatic inline const UE::CoreUObject::Private::FPropertyParams* const %s[] = {" % list_name)
        for name in prop_names:
            out.append("\t\t&%s," % name)
        out.append("\t};")
    meta_name, meta_count = writer.metadata_array(out, "Func%s_MetaData" % func.name, meta)
    out.append("\tstatic inline const UE::CoreUObject::Private::FFunctionParams Func_%s = {" % func.name)
    out.append("\t\t%s," % cpp_string(func.name))
    out.append("\t\t%s," % flags_expr(flags, "EFunctionFlags", "FUNC_None"))
    out.append("\t\t%s," % ("&" + thunk if event != "Implementable" else "nullptr"))
    has_parms = bool(func.params) or func.return_type is not None
    out.append("\t\t%s," % ("(int32)sizeof(%s)" % parms if has_parms else "0"))
    out.append("\t\t%s," % ("(int32)alignof(%s)" % parms if has_parms else "1"))
    out.append("\t\t%s," % (list_name if prop_names else "nullptr"))
    out.append("\t\t%d," % len(prop_names))
    out.append("\t\t%s," % meta_name)
    out.append("\t\t%d," % meta_count)
    out.append("\t};")
    return event


def write_event_stub(writer, decl, func, statics):
    """Defines the C++ member of a Blueprint event: it calls the reflected function through ProcessEvent."""
    out = writer.cpp
    params = ", ".join(p.text for p in func.params)
    ret = func.return_text if func.return_type is not None else "void"
    out.append("%s %s::%s(%s)%s" % (ret, decl.name, func.name, params, " const" if func.is_const else ""))
    out.append("{")
    out.append("\t%s::Parms_%s Parms{};" % (statics, func.name))
    for param in func.params:
        out.append("\tParms.%s = %s;" % (param.name, param.name))
    out.append("\tUObject* Self = const_cast<%s*>(this);" % decl.name)
    out.append('\tSelf->ProcessEvent(Self->FindFunctionChecked(FName(TEXT("%s"))), &Parms);' % func.name)
    for param in func.params:
        if param.is_out:
            out.append("\t%s = Parms.%s;" % (param.name, param.name))
    if func.return_type is not None:
        out.append("\treturn Parms.ReturnValue;")
    out.append("}")
    out.append("")


def write_class(parser, writer, decl):
    api = writer.api
    name = decl.name
    is_root = name == "UObject"
    super_name = name if is_root else decl.base
    if not is_root and (super_name is None or not is_object_class_name(super_name)):
        parser.error(decl.line, "UCLASS %s must derive from UObject or another UCLASS" % name)
    flags, config, within, meta = class_flags(parser, decl)
    if is_root:
        config = config or "Engine"
    statics = "Z_Construct_UClass_%s_Statics" % name
    out = writer.cpp
    out.append("// Class %s" % name)
    out.append("struct %s" % statics)
    out.append("{")
    count = write_property_list(
        parser, writer, out, name, decl.properties,
        lambda p: "sizeof(%s::%s)" % (name, p.name) if not p.array_dim else "sizeof(%s::%s[0])" % (name, p.name),
        lambda p: "offsetof(%s, %s)" % (name, p.name),
        name,
    )
    events = []
    for index, func in enumerate(decl.functions):
        event = write_function(parser, writer, out, decl, func, index)
        if event:
            events.append((func, event))
    if decl.functions:
        out.append("\tstatic inline const UE::CoreUObject::Private::FFunctionParams* const Functions[] = {")
        for func in decl.functions:
            out.append("\t\t&Func_%s," % func.name)
        out.append("\t};")
    meta_name, meta_count = writer.metadata_array(out, "ClassMetaData", writer.common_meta(decl.tooltip, meta + [("IncludePath", writer.include_path)]))
    uses_initializer = decl.has_initializer_ctor or not decl.has_default_ctor
    out.append("\tstatic inline const UE::CoreUObject::Private::FClassParams ClassParams = {")
    out.append("\t\t%s," % cpp_string(name[1:]))
    out.append('\t\tTEXT("/Script/%s"),' % writer.module)
    out.append("\t\t%s," % ("nullptr" if is_root else "&%s::StaticClass" % super_name))
    out.append("\t\t%s," % ("&%s::StaticClass" % within if within else "nullptr"))
    out.append("\t\tUE::CoreUObject::Private::GetNativeClassConstructor<%s, %s>()," % (name, "true" if uses_initializer else "false"))
    out.append("\t\t%s," % ("&%s::AddReferencedObjects" % name if decl.has_add_referenced_objects else "nullptr"))
    out.append("\t\t(int32)sizeof(%s)," % name)
    out.append("\t\t(int32)alignof(%s)," % name)
    out.append("\t\t%s," % flags_expr(flags, "EClassFlags", "CLASS_None"))
    out.append("\t\t%s," % (cpp_string(config) if config else "nullptr"))
    out.append("\t\t%s," % ("Properties" if count else "nullptr"))
    out.append("\t\t%d," % count)
    out.append("\t\t%s," % ("Functions" if decl.functions else "nullptr"))
    out.append("\t\t%d," % len(decl.functions))
    out.append("\t\t%s," % meta_name)
    out.append("\t\t%d," % meta_count)
    out.append("\t};")
    out.append("};")
    out.append("")
    out.append("UClass* %s::GetPrivateStaticClass()" % name)
    out.append("{")
    out.append("\tstatic UClass* Class = nullptr;")
    out.append("\treturn Class ? Class : UE::CoreUObject::Private::RegisterNativeClass(Class, %s::ClassParams);" % statics)
    out.append("}")
    out.append("")
    out.append("static UObject* Z_Register_%s()" % name)
    out.append("{")
    out.append("\treturn %s::StaticClass();" % name)
    out.append("}")
    out.append("static UE::CoreUObject::Private::FRegisterCompiledInInfo Z_CompiledIn_%s(&Z_Register_%s);" % (name, name))
    out.append("")
    for func, event in events:
        write_event_stub(writer, decl, func, statics)

    # The GENERATED_BODY expansion.
    macro = "%s_%d_%s" % (writer.file_id, decl.body_line, "GENERATED_BODY_LEGACY" if decl.body_kind in ("GENERATED_UCLASS_BODY", "GENERATED_BODY_LEGACY") else "GENERATED_BODY")
    lines = ["public:"]
    lines.append("using Super = %s;" % super_name)
    lines.append("using ThisClass = %s;" % name)
    lines.append("static UClass* StaticClass() { return GetPrivateStaticClass(); }")
    lines.append("static constexpr EClassFlags StaticClassFlags = %s;" % flags_expr(flags, "EClassFlags", "CLASS_None"))
    legacy = decl.body_kind in ("GENERATED_UCLASS_BODY", "GENERATED_BODY_LEGACY")
    if legacy:
        lines.append("%s(const FObjectInitializer& ObjectInitializer);" % name)
    elif not decl.has_any_ctor:
        lines.append(
            "%s(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get()) : Super(ObjectInitializer) {}" % name
        )
    for func, event in events:
        if event == "Native" and func.name not in decl.implementations:
            params = ", ".join(p.text for p in func.params)
            ret = func.return_text if func.return_type is not None else "void"
            lines.append("virtual %s %s_Implementation(%s)%s;" % (ret, func.name, params, " const" if func.is_const else ""))
    lines.append("private:")
    lines.append("friend struct %s;" % statics)
    lines.append("static %s UClass* GetPrivateStaticClass();" % api)
    lines.append("public:" if legacy else "private:")
    writer.h.append("#define %s \\" % macro)
    for line in lines[:-1]:
        writer.h.append("\t%s \\" % line)
    writer.h.append("\t%s" % lines[-1])
    writer.h.append("")
    writer.h.append("class %s;" % name)
    writer.h.append("")


def write_struct(parser, writer, decl):
    api = writer.api
    name = decl.name
    statics = "Z_Construct_UScriptStruct_%s_Statics" % name
    out = writer.cpp
    flags = ["STRUCT_Native"]
    meta = list(decl.meta)
    for spec in decl.specifiers:
        lower = spec.name.lower()
        if lower == "atomic":
            flags.append("STRUCT_Atomic")
        elif lower == "immutable":
            flags += ["STRUCT_Atomic", "STRUCT_Immutable"]
        elif lower == "noexport":
            flags.append("STRUCT_NoExport")
        elif lower == "blueprinttype":
            meta.append(("BlueprintType", "true"))
    if decl.api:
        flags.append("STRUCT_RequiredAPI")
    out.append("// Struct %s" % name)
    out.append("struct %s" % statics)
    out.append("{")
    count = write_property_list(
        parser, writer, out, name, decl.properties,
        lambda p: "sizeof(%s::%s)" % (name, p.name) if not p.array_dim else "sizeof(%s::%s[0])" % (name, p.name),
        lambda p: "offsetof(%s, %s)" % (name, p.name),
        name,
    )
    meta_name, meta_count = writer.metadata_array(out, "StructMetaData", writer.common_meta(decl.tooltip, meta))
    out.append("\tstatic inline const UE::CoreUObject::Private::FStructParams StructParams = {")
    out.append("\t\t%s," % cpp_string(name[1:]))
    out.append('\t\tTEXT("/Script/%s"),' % writer.module)
    out.append("\t\t%s," % ("[]() -> UScriptStruct* { return StaticStruct<%s>(); }" % decl.base if decl.base else "nullptr"))
    out.append("\t\t&UE::CoreUObject::Private::MakeStructOps<%s>," % name)
    out.append("\t\t(int32)sizeof(%s)," % name)
    out.append("\t\t(int32)alignof(%s)," % name)
    out.append("\t\t%s," % flags_expr(flags, "EStructFlags", "STRUCT_NoFlags"))
    out.append("\t\t%s," % ("Properties" if count else "nullptr"))
    out.append("\t\t%d," % count)
    out.append("\t\t%s," % meta_name)
    out.append("\t\t%d," % meta_count)
    out.append("\t};")
    out.append("};")
    out.append("")
    out.append("template <>")
    out.append("%s UScriptStruct* StaticStruct<%s>()" % (api, name))
    out.append("{")
    out.append("\tstatic UScriptStruct* Struct = nullptr;")
    out.append("\treturn Struct ? Struct : UE::CoreUObject::Private::RegisterNativeStruct(Struct, %s::StructParams);" % statics)
    out.append("}")
    if not decl.noexport:
        out.append("")
        out.append("UScriptStruct* %s::StaticStruct()" % name)
        out.append("{")
        out.append("\treturn ::StaticStruct<%s>();" % name)
        out.append("}")
    out.append("")
    out.append("static UObject* Z_Register_%s()" % name)
    out.append("{")
    out.append("\treturn StaticStruct<%s>();" % name)
    out.append("}")
    out.append("static UE::CoreUObject::Private::FRegisterCompiledInInfo Z_CompiledIn_%s(&Z_Register_%s);" % (name, name))
    out.append("")

    if decl.noexport:
        # A noexport struct is defined (possibly as an alias, FVector for UE::Math::TVector<double>) by a header
        # the reflecting one includes, so it is named as it is, without a forward declaration.
        writer.h.append("template <>")
        writer.h.append("%s UScriptStruct* StaticStruct<%s>();" % (api, name))
        writer.h.append("")
        return
    writer.h.append("struct %s;" % name)
    writer.h.append("template <>")
    writer.h.append("%s UScriptStruct* StaticStruct<struct %s>();" % (api, name))
    writer.h.append("")
    macro = "%s_%d_GENERATED_BODY" % (writer.file_id, decl.body_line)
    lines = ["friend struct %s;" % statics, "static %s UScriptStruct* StaticStruct();" % api]
    if decl.base:
        lines.append("using Super = %s;" % decl.base)
    writer.h.append("#define %s \\" % macro)
    for line in lines[:-1]:
        writer.h.append("\t%s \\" % line)
    writer.h.append("\t%s" % lines[-1])
    writer.h.append("")


def file_id_for(rel_path):
    return "FID_" + re.sub(r"[^A-Za-z0-9]", "_", rel_path)


def generate_header(module, api, module_dir, header, output_dir, repo_root):
    with open(header, "r", encoding="utf-8") as handle:
        text = handle.read()
    rel_to_repo = os.path.relpath(header, repo_root).replace(os.sep, "/")
    parser = Parser(rel_to_repo, rel_to_repo, text)
    parser.parse()
    if not parser.classes and not parser.enums:
        return None
    module_rel = os.path.relpath(header, module_dir).replace(os.sep, "/")
    include_path = module_rel
    for folder in ("Public/", "Classes/", "Private/"):
        if include_path.startswith(folder):
            include_path = include_path[len(folder) :]
            break
    base = os.path.splitext(os.path.basename(header))[0]
    writer = Writer(module, api, header, include_path, module_rel, file_id_for(rel_to_repo))

    writer.h.append("// Generated by the header tool from %s. Do not edit." % rel_to_repo)
    writer.h.append("")
    guard = "UE_GENERATED_%s" % re.sub(r"[^A-Za-z0-9]", "_", rel_to_repo)
    writer.h.append("#ifdef %s" % guard)
    writer.h.append('#error "%s.generated.h included twice: %s needs #pragma once"' % (base, rel_to_repo))
    writer.h.append("#endif")
    writer.h.append("#define %s" % guard)
    writer.h.append("")
    writer.h.append('#include "UObject/ObjectMacros.h"')
    writer.h.append('#include "UObject/Script.h"')
    writer.h.append("")
    writer.h.append("class UClass;")
    writer.h.append("class UEnum;")
    writer.h.append("class UScriptStruct;")
    writer.h.append("class FObjectInitializer;")
    writer.h.append("template <typename T>")
    writer.h.append("UEnum* StaticEnum();")
    writer.h.append("template <typename T>")
    writer.h.append("UScriptStruct* StaticStruct();")
    writer.h.append("")
    writer.h.append("#undef CURRENT_FILE_ID")
    writer.h.append("#define CURRENT_FILE_ID %s" % writer.file_id)
    writer.h.append("")

    writer.cpp.append("// Generated by the header tool from %s. Do not edit." % rel_to_repo)
    writer.cpp.append("")
    writer.cpp.append('#include "UObject/GeneratedCppIncludes.h"')
    writer.cpp.append('#include "%s"' % include_path)
    writer.cpp.append("")
    writer.cpp.append("UE_GENERATED_DISABLE_OFFSETOF_WARNING")
    writer.cpp.append("")

    for decl in parser.enums:
        write_enum(parser, writer, decl)
    for decl in parser.classes:
        if decl.kind == "class":
            write_class(parser, writer, decl)
        else:
            write_struct(parser, writer, decl)

    writer.cpp.append("UE_GENERATED_ENABLE_OFFSETOF_WARNING")
    return base, "\n".join(writer.h) + "\n", "\n".join(writer.cpp) + "\n"


def write_if_changed(path, content):
    try:
        with open(path, "r", encoding="utf-8") as handle:
            if handle.read() == content:
                return
    except OSError:
        pass
    with open(path, "w", encoding="utf-8") as handle:
        handle.write(content)


def main(argv):
    arguments = argparse.ArgumentParser(description=__doc__)
    arguments.add_argument("--module", required=True)
    arguments.add_argument("--module-dir", required=True)
    arguments.add_argument("--output-dir", required=True)
    arguments.add_argument("--repo-root", required=True)
    arguments.add_argument("--expected", default=None, help="file listing the headers the build expects outputs for")
    arguments.add_argument("--rescan-stamp", default=None, help="file touched when the set of reflected headers changes")
    arguments.add_argument("headers", nargs="*")
    options = arguments.parse_args(argv)

    api = options.module.upper() + "_API"
    os.makedirs(options.output_dir, exist_ok=True)
    produced = []
    failed = False
    for header in sorted(options.headers):
        try:
            result = generate_header(options.module, api, options.module_dir, header, options.output_dir, options.repo_root)
        except HeaderError as error:
            print(str(error), file=sys.stderr)
            failed = True
            continue
        if result is None:
            continue
        base, header_text, cpp_text = result
        write_if_changed(os.path.join(options.output_dir, base + ".generated.h"), header_text)
        write_if_changed(os.path.join(options.output_dir, base + ".gen.cpp"), cpp_text)
        produced.append(os.path.abspath(header))
    if failed:
        return 1
    if options.expected:
        expected = []
        if os.path.exists(options.expected):
            with open(options.expected, "r", encoding="utf-8") as handle:
                expected = [line.strip() for line in handle if line.strip()]
        missing = sorted(set(produced) - set(os.path.abspath(p) for p in expected))
        if missing:
            if options.rescan_stamp:
                with open(options.rescan_stamp, "a", encoding="utf-8") as handle:
                    handle.write("rescan\n")
            for header in missing:
                rel = os.path.relpath(header, options.repo_root)
                print("%s(1): error: this header now declares reflected types; run the build again so it picks up "
                      "the new generated files" % rel, file=sys.stderr)
            return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
