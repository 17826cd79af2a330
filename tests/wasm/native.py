"""What the native library answers: a call a line on standard input, as JSON, and its answer on standard output."""

import json
import sys

import kcnvrt

for line in sys.stdin:
    call = json.loads(line)
    options = call["options"]
    if options.get("base") is not None:
        options["base"] = options["base"].encode()
    texts = [text.encode() for text in call["texts"]]
    try:
        result = getattr(kcnvrt, call["function"])(*call["names"], *texts, *call["pointers"], **options)
    except kcnvrt.WrongUsage as error:
        print(json.dumps({"wrong_usage": str(error)}))
        continue
    print(json.dumps({
        "status": result.status.name.lower().replace("_", "-"),
        "direction": result.direction and "to-" + result.direction,
        "output": result.text,
        "problems": [problem._asdict() for problem in result.problems],
        "losses": [loss._asdict() for loss in result.losses],
    }))
