// node build.mjs OUTPUT.cpp: bundles the page and writes it as C++, split where the terrain goes.
import { build } from 'esbuild';
import { readFileSync, writeFileSync } from 'node:fs';

const here = (name) => new URL(name, import.meta.url);
const bundled = await build({
    entryPoints: [here('viewer.js').pathname],
    bundle: true,
    minify: true,
    write: false,
    format: 'iife',
    target: 'es2020',
    charset: 'ascii',
    legalComments: 'none',
});
const script = bundled.outputFiles[0].text.replaceAll('</script', '<\\/script');
const licence = readFileSync(here('node_modules/three/LICENSE'), 'utf8').trim();
const page = readFileSync(here('page.html'), 'utf8')
    .replace('@LICENCE@', () => licence)
    .replace('@SCRIPT@', () => script.trim());
const [before, after] = page.split('@TERRAIN@');

// Short raw literals, one behind the other: compilers limit the length of one.
function literal(text) {
    const pieces = text.match(/[^]{1,8000}/g);
    return pieces.map((piece) => `    R"page(${piece})page"`).join('\n');
}
writeFileSync(process.argv[2], `// Made by host/viewer/build.mjs.
#include "host/viewer/page_text.h"

namespace qsvtin {

const std::string_view kPageBeforeTerrain =
${literal(before)};
const std::string_view kPageAfterTerrain =
${literal(after)};

}   // namespace qsvtin
`);
