"""The boxes of transcripts, one after the other, as presser.exe writes them down: [title] text,
with a word where there is a help button."""

import json
import os
import sys

for path in sys.argv[1:]:
    folder = os.path.dirname(path) + "/"
    with open(path, encoding="utf-8") as lines:
        for event in map(json.loads, lines):
            if event["kind"] == "box":
                text = event["text"].replace("\r", "").replace(folder, "FOLDER/")
                help = " (with help)" if event["help"] else ""
                print(f"[{event['title'] or 'Error'}]{help} {text}")
