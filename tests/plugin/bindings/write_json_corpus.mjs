// Writes a public corpus of JSON texts to one file, each behind a line of its name and its size in bytes:
// node write_json_corpus.mjs CORPUS_MODULE FILE

import { writeFileSync } from "fs";
import { pathToFileURL } from "url";

const [corpus, file] = process.argv.slice(2);
const { parsing } = await import(pathToFileURL(corpus));
const records = parsing.map(({ name, input }) => `${name} ${Buffer.byteLength(input)}\n${input}`);
writeFileSync(file, records.join(""));
