"""Checks the sample of the update document against its JSON Schema.

Usage: validate_sample.py <schema> <sample>. Exit status 77 means: not checked, reason printed.
"""

import json
import sys

try:
    from jsonschema import Draft202012Validator
except ImportError as error:
    print(f"Skipped: no JSON Schema validator for draft 2020-12 ({error}); "
          "Debian's package is python3-jsonschema.")
    sys.exit(77)


def changed(sample, **members):
    """The sample with members of the product replaced; None removes one."""
    product = {**sample["velmora"], **members}
    return {"velmora": {name: value for name, value in product.items() if value is not None}}


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        schema = json.load(file)
    with open(sys.argv[2], encoding="utf-8") as file:
        sample = json.load(file)
    Draft202012Validator.check_schema(schema)
    validator = Draft202012Validator(schema)

    good = [
        sample,
        changed(sample, releaseNotes=None),
        changed(sample, releaseNotes=""),
        changed(sample, version="10.0.12", more=[1]),
        {"other": 1, **sample},
    ]
    bad = [
        [],
        [sample],
        {},
        {"velmora": []},
        changed(sample, version=None),
        changed(sample, version=""),
        changed(sample, version=9),
        changed(sample, version="1.2"),
        changed(sample, version="v1.2.0"),
        changed(sample, version="1.2.0-rc1"),
        changed(sample, version="1.2.0.4"),
        changed(sample, version="99999999999.0.0"),
        changed(sample, downloadUrl=None),
        changed(sample, downloadUrl="http://www.velmora.example/download"),
        changed(sample, downloadUrl="HTTPS://www.velmora.example/download"),
        changed(sample, downloadUrl="https:"),
        changed(sample, releaseNotes=["a"]),
    ]
    refused = [document for document in good if not validator.is_valid(document)]
    accepted = [document for document in bad if validator.is_valid(document)]
    for verdict, documents in (("Refused", refused), ("Accepted", accepted)):
        for document in documents:
            print(f"{verdict}: {json.dumps(document)}")
    return 1 if refused or accepted else 0


sys.exit(main())
