"""validate_report.py SCHEMA REPORT...: exit status 0 when all reports are valid, 1 when none is, 2 when some are."""
import json
import sys

import jsonschema

with open(sys.argv[1], encoding="utf-8") as file:
    schema = json.load(file)
jsonschema.Draft202012Validator.check_schema(schema)
validator = jsonschema.Draft202012Validator(schema)
invalid = 0
for path in sys.argv[2:]:
    with open(path, encoding="utf-8") as file:
        errors = list(validator.iter_errors(json.load(file)))
    invalid += bool(errors)
    for error in errors:
        print(f"{path}: /{'/'.join(map(str, error.absolute_path))}: {error.message}")
sys.exit(0 if not invalid else 1 if invalid == len(sys.argv) - 2 else 2)
