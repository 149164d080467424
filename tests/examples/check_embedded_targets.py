"""Reads which targets a configured embedded build has, and fails if one comes from elsewhere than library and siblings."""

import json
import pathlib
import sys

ALLOWED = ("siblings/", "src")

reply = pathlib.Path(sys.argv[1]) / ".cmake/api/v1/reply"
index = max(reply.glob("index-*.json"))
model_file = json.loads(index.read_text())["reply"]["codemodel-v2"]["jsonFile"]
model = json.loads((reply / model_file).read_text())
host = pathlib.Path(model["paths"]["source"])
root = host.parent.parent

built = {}
for entry in model["configurations"][0]["targets"]:
    target = json.loads((reply / entry["jsonFile"]).read_text())
    folder = (host / target["paths"]["source"]).resolve()
    if folder == host:
        continue
    if target["type"] != "UTILITY" or not target.get("isGeneratorProvided"):
        built[target["name"]] = folder.relative_to(root).as_posix()

stray = {name: folder for name, folder in built.items() if not folder.startswith(ALLOWED)}
expected = {"generaltoolsgui", "gui", "guicore", "document", "core", "batchcore", "geometryengine", "resource", "utils"}
print("targets under add_subdirectory:", ", ".join(sorted(built)))
if stray:
    sys.exit(f"these have no place in a host's build: {stray}")
if not expected <= built.keys():
    sys.exit(f"these are missing: {expected - built.keys()}")
