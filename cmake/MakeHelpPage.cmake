# One page of the manual: Markdown to a whole HTML page, links between pages turned to match.
execute_process(COMMAND ${CMARK_GFM} -e table --smart ${SOURCE} OUTPUT_VARIABLE body COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE "href=\"(\\.\\./|manual/|docs/|docs/manual/)([a-zA-Z-]+\\.md)" "href=\"\\2" body "${body}")
string(REPLACE "href=\"SECURITY.md" "href=\"security.md" body "${body}")
string(REGEX REPLACE "href=\"([a-z-]+)\\.md" "href=\"\\1.html" body "${body}")
string(REPLACE "href=\"README.md" "href=\"index.html" body "${body}")
string(REPLACE "src=\"../images/" "src=\"images/" body "${body}")
string(REGEX REPLACE "<h([123])>([^<]*)</h" "<h\\1 id=\"\\2\">\\2</h" body "${body}")
string(REGEX MATCH "<h1[^>]*>([^<]*)" title "${body}")
set(title "${CMAKE_MATCH_1}")
file(WRITE ${PAGE} "<!DOCTYPE html>
<html lang=\"en\"><head><meta charset=\"utf-8\"><meta name=\"viewport\" content=\"width=device-width\">
<title>${title}</title><style>
:root { color-scheme: light dark; }
body { font-family: sans-serif; max-width: 54em; margin: 2em auto; padding: 0 1em; line-height: 1.45; }
table { border-collapse: collapse; } td, th { text-align: left; vertical-align: top; padding: .25em .8em .25em 0; border-bottom: 1px solid #8884; }
code, pre { font-family: monospace; background: #8882; border-radius: 3px; } code { padding: 0 .2em; }
pre { padding: .7em; overflow-x: auto; } pre code { background: none; padding: 0; } img { max-width: 100%; }
nav { font-size: smaller; }</style></head><body>
<nav><a href=\"index.html\">Quillon ${VERSION}: the manual</a></nav>
${body}</body></html>
")
