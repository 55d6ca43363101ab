#!/usr/bin/python3
"""Validates panels against a JSON Schema: validate-panels.py SCHEMA texts|values PANEL...

Prints a line for each panel: "valid", "invalid" or "unreadable", and its path. With `values` numbers,
true and false are what they look like, as editors have it; with `texts` all values are texts.
"""
import json
import re
import sys

import jsonschema
import yaml


class Texts(yaml.SafeLoader):
    """Nothing is taken for anything else, but what is absent stays so. Keys are texts always."""

    def construct_mapping(self, node, deep=False):
        if not all(isinstance(key, yaml.ScalarNode) for key, _ in node.value):
            raise yaml.constructor.ConstructorError(None, None, "a key is no text", node.start_mark)
        return {key.value: self.construct_object(value, deep) for key, value in node.value}


Texts.yaml_implicit_resolvers = {"": [("tag:yaml.org,2002:null", re.compile("^$"))]}


class Values(Texts):
    """Knows the few kinds of YAML 1.2: null, true and false, numbers."""


Values.yaml_implicit_resolvers = {}
for tag, pattern, first in (
    ("null", r"~|null|Null|NULL|", ["~", "n", "N", ""]),
    ("bool", r"true|True|TRUE|false|False|FALSE", list("tTfF")),
    ("int", r"[-+]?[0-9]+", list("-+0123456789")),
    ("float", r"[-+]?(\.[0-9]+|[0-9]+(\.[0-9]*)?)([eE][-+]?[0-9]+)?", list("-+.0123456789")),
):
    Values.add_implicit_resolver(f"tag:yaml.org,2002:{tag}", re.compile(f"^(?:{pattern})$"), first)

with open(sys.argv[1], encoding="utf-8") as file:
    schema = json.load(file)
jsonschema.Draft7Validator.check_schema(schema)
validator = jsonschema.Draft7Validator(schema)
loader = {"texts": Texts, "values": Values}[sys.argv[2]]
for path in sys.argv[3:]:
    try:
        with open(path, "rb") as file:
            panel = yaml.load(file, loader)
        verdict = "valid" if validator.is_valid(panel) else "invalid"
    except (yaml.YAMLError, UnicodeDecodeError, ValueError, RecursionError):
        verdict = "unreadable"
    print(verdict, path)
    if verdict == "invalid":
        for error in list(validator.iter_errors(panel))[:3]:
            print(f"{path}: /{'/'.join(map(str, error.path))}: {error.message[:300]}", file=sys.stderr)
