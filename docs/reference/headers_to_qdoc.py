# SPDX-License-Identifier: MIT
"""Makes the input of QDoc from the library's public headers.

QDoc reads declarations from headers, but comments only from sources. Ours stand in the headers, beside
what they describe, and name no topic where the declaration below says it already. This script writes

  OUTPUT/include/ChartsLibrary/*.h   the headers as they are, and AllHeaders.h, which includes them
  OUTPUT/comments/*.qdoc             for each header its comments with their topics:

  - a comment with a topic of its own (\\class, \\qmltype, \\enum, ...) is taken over;
  - any other one belongs to the declaration that follows it, and gets \\fn or \\variable;
  - parameters that the text mentions by name are marked as such;
  - what Q_PROPERTY says (read only, the notify signal) is added to the property's QML documentation;
  - properties, methods and signals that are documented for QML get a C++ entry that leads there;
  - constructors with nothing but a parent, destructors, overloads that follow each other and getters
    of a setter get a standard text where they have no comment; overridden functions are left out.

Anything else that is public or protected and has no comment is an error.

  headers_to_qdoc.py OUTPUT HEADER...
"""

import re
import shutil
import sys
from pathlib import Path

TOPIC = re.compile(r'\s*\\(class|qmltype|qmlproperty|qmlmethod|qmlsignal|enum|fn)\b')
MACRO = re.compile(r'(Q_OBJECT|Q_GADGET|Q_ENUM|Q_PROPERTY|Q_MOC_INCLUDE|Q_DECLARE_TYPEINFO'
                   r'|QML_[A-Z_]+|QT_BEGIN_NAMESPACE|QT_END_NAMESPACE)\b')
LABEL = re.compile(r'(public|protected|private|Q_SIGNALS)\s*:(?!:)')
SCOPE = re.compile(r'(?:template\s*<[^>]*>\s*)?(namespace|class|struct)\s+(?:CHARTS_EXPORT\s+)?(\w+)')
FUNCTION = re.compile(r'(?P<template>template<[^>]*> )?(?P<type>.*?)(?P<name>operator\W+?|~?\w+)'
                      r'(?P<rest>\((?:[^()]|\([^()]*\))*\)(?: const)?)(?P<tail>.*)$')
SPECIFIERS = re.compile(r'\[\[nodiscard\]\]'
                        r'|\b(explicit|constexpr|inline|virtual|Q_INVOKABLE|CHARTS_EXPORT)\b')


def behind_bracket(text, position):
    """The position behind the bracket that closes the one at position."""
    closing = {'(': ')', '{': '}'}
    stack = []
    while position < len(text):
        character = text[position]
        if character in closing:
            stack.append(closing[character])
        elif character == stack[-1]:
            stack.pop()
            if not stack:
                return position + 1
        position += 1
    raise SystemExit('a bracket is not closed')


def behind(text, addition):
    """The first line of a comment, and the rest with a paragraph more before its references."""
    first, _, body = text.partition('\n')
    body, references, names = body.partition('\\sa ')
    return first, f'{body.strip()}\n\n    {addition}\n\n    {references}{names}'


def first_sentence(text):
    text = ' '.join(text.split())
    end = re.search(r'[.:](?=\s|$)', text)
    return text[:end.start()] + '.' if end else text


class Header:
    def __init__(self, path):
        self.path = path
        self.text = path.read_text(encoding='utf-8')
        self.position = 0
        self.scopes = []  # (class, struct or namespace; name; access)
        self.comment = None  # the one that waits for a declaration
        self.documented = set()  # enumerations
        self.properties = []
        self.signals = {}
        self.last_function = None
        self.qml_type = None  # documentation that waits for the name of its class
        self.has_qml_type = False
        self.output = []
        self.errors = []

    def complain(self, what):
        line = self.text.count('\n', 0, self.position) + 1
        self.errors.append(f'{self.path}:{line}: {what}')

    def scope(self):
        return '::'.join(name for _, name, _ in self.scopes)

    def emit(self, topic, text):
        self.output.append(f'/*!\n    {topic}\n    {text.strip()}\n*/')

    # --- Reading

    def read(self):
        text = self.text
        while self.position < len(text):
            macro = MACRO.match(text, self.position)
            label = LABEL.match(text, self.position)
            if text[self.position].isspace() or text[self.position] == ';':
                self.position += 1
            elif text.startswith('/*', self.position):
                end = text.index('*/', self.position)
                if text[self.position + 2] == '!':
                    self.take_comment(text[self.position + 3:end].strip())
                self.position = end + 2
            elif text.startswith(('//', '#'), self.position):
                self.position = text.index('\n', self.position)
            elif macro:
                self.take_macro(macro)
            elif label:
                kind, name, _ = self.scopes[-1]
                self.scopes[-1] = (kind, name, label.group(1))
                self.position = label.end()
            elif text[self.position] == '}':
                self.scopes.pop()
                self.position += 1
            else:
                self.take_declaration()
        if self.qml_type:
            self.complain('a comment with \\qmltype is not followed by one with \\class')
        self.write_properties()

    def take_comment(self, text):
        topic = TOPIC.match(text)
        topic = topic.group(1) if topic else None
        if topic == 'qmltype':
            self.qml_type = text
        elif topic == 'class':
            first, _, body = text.partition('\n')
            first += ('\n    \\inmodule ChartsLibrary'
                      f'\n    \\inheaderfile ChartsLibrary/{self.path.name}')
            if self.qml_type:
                class_name, qml_name = first.split()[1], self.qml_type.split()[1]
                self.emit(*behind(self.qml_type, f'In C++ this is \\l [CPP] {{{class_name}}}.'))
                first, body = behind(f'{first}\n{body}', f'In QML this is \\l [QML] {{{qml_name}}}.')
                self.has_qml_type = True
                self.qml_type = None
            self.emit(first, body)
        elif topic == 'enum':
            self.output.append(f'/*!\n    {text}\n*/')
            self.documented.add(re.match(r'\\enum (?:\w+::)*(\w+)', text).group(1))
        elif topic and topic != 'qmlproperty':
            self.output.append(f'/*!\n    {text}\n*/')
        # A method or signal of QML is one of C++ as well.
        if topic in (None, 'qmlproperty', 'qmlmethod', 'qmlsignal'):
            self.comment = text

    def take_macro(self, match):
        self.position = match.end()
        argument = ''
        if self.text[self.position] == '(':
            end = behind_bracket(self.text, self.position)
            argument = ' '.join(self.text[self.position + 1:end - 1].split())
            self.position = end
        if match.group(1) != 'Q_PROPERTY':
            return
        name, access = re.search(r'(\w+) (READ|MEMBER) ', argument).groups()
        notify = re.search(r'NOTIFY (\w+)', argument)
        if not self.comment or not self.comment.startswith('\\qmlproperty'):
            self.complain(f'property {name} has no documentation')
            return
        self.properties.append({
            'class': self.scope(), 'name': name, 'text': self.comment,
            'is_member': access == 'MEMBER', 'is_constant': ' CONSTANT' in argument,
            'is_writable': ' WRITE ' in argument or access == 'MEMBER',
            'functions': re.findall(r'(?:READ|WRITE|NOTIFY) (\w+)', argument),
            'notify': notify.group(1) if notify else None})
        self.comment = None

    def take_declaration(self):
        start = position = self.position
        while self.text[position] != ';':
            character = self.text[position]
            if character == '(':
                position = behind_bracket(self.text, position)
            elif character == '{':
                head = self.text[start:position]
                scope = SCOPE.match(head)
                if scope and '(' not in head:
                    access = 'private' if scope.group(1) == 'class' else 'public'
                    self.scopes.append((scope.group(1), scope.group(2), access))
                    self.position = position + 1
                    self.comment = None
                    return
                position = behind_bracket(self.text, position)
                if head.rstrip()[-1] != '=' and not head.startswith('enum'):
                    break
            else:
                position += 1
        self.position = position
        self.take_member(' '.join(self.text[start:position].split()))
        self.comment = None

    # --- Writing

    def take_member(self, chunk):
        is_private = any(access == 'private' for _, _, access in self.scopes)
        if is_private or re.match(r'(class|struct|static_assert|friend)\b', chunk):
            return
        comment = self.comment or ''
        if '\\internal' in comment:
            return
        if chunk.startswith('enum'):
            name = re.match(r'enum (class )?(\w+)', chunk).group(2)
            if name not in self.documented:
                self.complain(f'enumeration {name} has no documentation')
            return
        function = FUNCTION.match(re.sub(r'\s*((?<!:):(?!:).*)?\{.*$', '', chunk))
        if function and '=' not in re.sub(r'operator\W+', '', chunk).split('(')[0]:
            self.write_function(function, comment)
            return
        name = re.match(r'[^={]*?(\w+)\s*(=.*)?$', chunk).group(1)
        if comment:
            self.emit(f'\\variable {self.scope()}::{name}', comment)
        elif not any(item['name'] == name and item['is_member'] for item in self.properties):
            self.complain(f'{name} has no documentation')

    def write_function(self, match, comment):
        name, arguments = match.group('name'), match.group('rest')
        kind, class_name, access = self.scopes[-1]
        result = ' '.join(SPECIFIERS.sub('', match.group('type')).split())
        if access == 'Q_SIGNALS':
            self.signals[name] = arguments.replace('Charts::', '')
        is_static = result.startswith('static ')
        result = result.removeprefix('static ')
        # Behind the name a type is looked up in the scope of the class.
        signature = f'{self.scope()}::{name}{arguments}'
        signature = f'{result} {signature}'.strip() if result in ('', 'void') else (
            f'auto {signature} -> {result}')
        topic = ('\\fn ' + (match.group('template') or '') + ('static ' if is_static else '')
                 + signature)
        if kind == 'namespace' and re.search(rf'\\class Charts::{self.path.stem}\b', self.text):
            topic += f'\n    \\relates Charts::{self.path.stem}'

        belongs_to_property = any(name in item['functions'] for item in self.properties)
        is_for_qml = (access == 'Q_SIGNALS' and not belongs_to_property
                      or 'Q_INVOKABLE' in match.group('type'))
        if re.match(r'\\qml(method|signal)', comment):
            comment = comment.partition('\n')[2]
        elif is_for_qml and self.has_qml_type:
            self.complain(f'{name}() is not documented for QML')
        elif not comment:
            if name == '~' + class_name:
                comment = 'Destructor.'
            elif name == class_name and re.fullmatch(
                    r'\((QObject|QQuickItem) \*parent = nullptr\)', arguments):
                comment = ('Constructs an object with the defaults of its properties, as a child of '
                           '\\a parent.')
            elif 'override' in match.group('tail'):
                comment = '\\internal'
            elif belongs_to_property:
                return
            elif name == self.last_function:
                comment = '\\overload'
            elif re.search(rf'\bset{name[0].upper()}{name[1:]}\(', self.text):
                comment = f'Returns what set{name[0].upper()}{name[1:]}() has set.'
            else:
                self.complain(f'{name}() has no documentation')
                return
        self.last_function = name
        if result == 'bool':
            comment = re.sub(r'^Whether', 'Returns whether', comment)
        for parameter in re.findall(r'(\w+)(?: = [^,)]+)?(?=[,)])', arguments):
            # Shorter names are words of the language.
            if len(parameter) > 3 and not re.search(rf'\\a {parameter}\b', comment):
                comment = re.sub(rf'(?<![\\\w.:]){parameter}\b(?!\(|[.:]\w)', rf'\\a {parameter}',
                                 comment, count=1)
        self.emit(topic, comment)

    def write_properties(self):
        for item in self.properties:
            topic, _, body = item['text'].partition('\n')
            if item['is_constant']:
                fact = 'It never changes, so that there is no notify signal.'
            elif not item['notify']:
                fact = 'There is no notify signal.'
            elif item['notify'] not in self.signals:
                self.complain(f"signal {item['notify']}() is not declared")
                continue
            else:
                fact = f"Notify signal: \\c {{{item['notify']}{self.signals[item['notify']]}}}."
            readonly = '' if item['is_writable'] else '\n    \\readonly'
            self.emit(topic + readonly, f'{body.strip()}\n\n    {fact}')
            link = f"More is told with \\l [QML] {{{topic.split()[2]}}}{{the property in QML}}."
            if item['is_member']:
                self.emit(f"\\variable {item['class']}::{item['name']}",
                          f'{first_sentence(body)} {link}')
            else:
                self.emit(f"\\property {item['class']}::{item['name']}",
                          f'\\brief {first_sentence(body)}\n\n    {link}')


def main():
    output = Path(sys.argv[1])
    shutil.rmtree(output, ignore_errors=True)
    include = output / 'include' / 'ChartsLibrary'
    comments = output / 'comments'
    include.mkdir(parents=True)
    comments.mkdir()
    paths = sorted(map(Path, sys.argv[2:]), key=lambda path: path.name)
    errors = []
    for path in paths:
        header = Header(path)
        header.read()
        errors += header.errors
        shutil.copyfile(path, include / path.name)
        (comments / (path.name + '.qdoc')).write_text(
            '\n\n'.join(header.output) + '\n', encoding='utf-8')
    (include / 'AllHeaders.h').write_text(
        ''.join(f'#include "{path.name}"\n' for path in paths), encoding='utf-8')
    if errors:
        sys.exit('\n'.join(errors))


main()
