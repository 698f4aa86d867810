"""The boxes of transcripts, one after the other, as presser.exe writes them down: [title] text."""

import json
import os
import sys

for path in sys.argv[1:]:
    folder = os.path.dirname(path) + "/"
    with open(path, encoding="utf-8") as lines:
        for event in map(json.loads, lines):
            if event["kind"] == "box":
                text = event["text"].replace("\r", "").replace(folder, "FOLDER/")
                print(f"[{event['title'] or 'Error'}] {text}")
