"""Workbooks that no writer at hand makes, spelled out: other prefixes and namespaces, unnumbered cells, shared formulas
with a chain, a pivot table, sheets in another order than their parts."""

import zipfile

MAIN = "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
STRICT = "http://purl.oclc.org/ooxml/spreadsheetml/main"
OFFICE = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
OFFICE_STRICT = "http://purl.oclc.org/ooxml/officeDocument/relationships"
RELATIONS = "http://schemas.openxmlformats.org/package/2006/relationships"
TYPES = "application/vnd.openxmlformats-officedocument.spreadsheetml."
HEAD = '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n'

STYLES = f"""{HEAD}<styleSheet xmlns="{MAIN}"><numFmts count="2"><numFmt numFmtId="170" formatCode="0.000"/>
<numFmt numFmtId="171" formatCode="d mmm yy"/></numFmts><fonts count="1"><font><sz val="11"/><name val="Arial"/></font>
</fonts><fills count="1"><fill><patternFill patternType="none"/></fill></fills><borders count="1"><border/></borders>
<cellStyleXfs count="1"><xf/></cellStyleXfs><cellXfs count="5"><xf xfId="0"/>
<xf numFmtId="9" xfId="0"><alignment horizontal="left"/></xf><xf numFmtId="170" xfId="0"/><xf numFmtId="49" xfId="0"/>
<xf numFmtId="171" xfId="0"/></cellXfs></styleSheet>"""


def package(path, parts):
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as archive:
        for name, text in parts.items():
            archive.writestr(name, text)


def relations(*items, base=OFFICE):
    return (f'{HEAD}<Relationships xmlns="{RELATIONS}">' + "".join(
        f'<Relationship Id="r{i}" Type="{base}/{kind}" Target="{target}"/>' for i, (kind, target) in enumerate(items, 1)) +
        "</Relationships>")


def types(*parts):
    return (f'{HEAD}<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">'
            '<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>'
            '<Default Extension="xml" ContentType="application/xml"/>'
            '<Default Extension="vml" ContentType="application/vnd.openxmlformats-officedocument.vmlDrawing"/>' +
            "".join(f'<Override PartName="/{name}" ContentType="{TYPES}{kind}+xml"/>' for name, kind in parts) + "</Types>")


def sheet(rows, before="", behind="", main=MAIN, more=""):
    return f'{HEAD}<worksheet xmlns="{main}" {more}>{before}<sheetData>{rows}</sheetData>{behind}</worksheet>'


def data_rows(formula=lambda row: ""):
    return "".join(f'<row r="{r}" spans="1:2"><c r="A{r}" t="inlineStr"><is><t>item {r}</t></is></c>'
                   f'<c r="B{r}"><v>{r}</v></c>{formula(r)}</row>' for r in range(1, 6))


def book(path, first, workbook_more="", parts=None, extra_relations=(), main=MAIN, office=OFFICE, notes=None):
    notes = notes or sheet('<row r="1"><c r="A1"><f>Data!B2*2</f><v>4</v></c></row>', main=main)
    all_parts = {
        "[Content_Types].xml": types(("xl/workbook.xml", "sheet.main"), ("xl/worksheets/sheet1.xml", "worksheet"),
                                     ("xl/worksheets/sheet2.xml", "worksheet"), ("xl/styles.xml", "styles"),
                                     *[(n, k) for n, (k, _) in (parts or {}).items() if k]),
        "_rels/.rels": relations(("officeDocument", "xl/workbook.xml"), base=office),
        "xl/workbook.xml": f'{HEAD}<workbook xmlns="{main}" xmlns:r="{office}"><sheets><sheet name="Data" sheetId="1" '
                           f'r:id="r1"/><sheet name="Notes" sheetId="2" r:id="r2"/></sheets>{workbook_more}</workbook>',
        "xl/_rels/workbook.xml.rels": relations(("worksheet", "worksheets/sheet1.xml"), ("worksheet", "/xl/worksheets/sheet2.xml"),
                                                ("styles", "styles.xml"), *extra_relations, base=office),
        "xl/worksheets/sheet1.xml": first, "xl/worksheets/sheet2.xml": notes,
        "xl/styles.xml": STYLES.replace(MAIN, main)}
    all_parts.update({name: text for name, (_, text) in (parts or {}).items()})
    package(path, all_parts)


def prefixed(path):
    rows = data_rows().replace("<", "<x:").replace("<x:/", "</x:").replace("</x:row>", "</x:row>\n  ")
    book(path, f'{HEAD}<x:worksheet xmlns:x="{MAIN}"><x:dimension ref="A1:B5"/><!-- a < b --><x:sheetData>\n  {rows}'
               '</x:sheetData><x:pageMargins left="1" right=\'1\' top="1" bottom="1" header="0" footer="0" /></x:worksheet>')


def strict(path):
    book(path, sheet(data_rows(), main=STRICT), main=STRICT, office=OFFICE_STRICT)


def unnumbered(path):
    rows = "<row>" + "".join(f"<c><v>{i}</v></c>" for i in range(3)) + "</row>"
    book(path, sheet(rows * 60 + '<row r="70" customFormat="1" s="1"/>', before='<dimension ref="A1:C70"/>'))


def shared(path):
    def formula(row):
        inner = ' ref="C1:C5">A1*$B$1</f>' if row == 1 else "/>"
        return f'<c r="C{row}"><f t="shared" si="0"{inner}<v>1</v></c>'
    chain = f'{HEAD}<calcChain xmlns="{MAIN}">' + "".join(f'<c r="C{r}" i="1"/>' for r in range(1, 6)) + "</calcChain>"
    book(path, sheet(data_rows(formula)), workbook_more='<calcPr calcId="191029"/><extLst/>',
         parts={"xl/calcChain.xml": ("calcChain", chain)}, extra_relations=[("calcChain", "calcChain.xml")])


def pivot(path):
    rows = "".join(f'<row r="{r}"><c r="A{r}" t="inlineStr"><is><t>{a}</t></is></c><c r="B{r}" t="inlineStr"><is><t>{b}'
                   "</t></is></c></row>" for r, a, b in [(1, "Kind", "Size"), (2, "a", "1"), (3, "b", "2")])
    cache = (f'{HEAD}<pivotCacheDefinition xmlns="{MAIN}" xmlns:r="{OFFICE}" r:id="r1" refreshOnLoad="1" recordCount="0">'
             '<cacheSource type="worksheet"><worksheetSource ref="A1:B3" sheet="Data"/></cacheSource><cacheFields count="2">'
             '<cacheField name="Kind" numFmtId="0"><sharedItems count="2"><s v="a"/><s v="b"/></sharedItems></cacheField>'
             '<cacheField name="Size" numFmtId="0"><sharedItems/></cacheField></cacheFields></pivotCacheDefinition>')
    table = (f'{HEAD}<pivotTableDefinition xmlns="{MAIN}" name="P" cacheId="1" dataCaption="Values" updatedVersion="3" '
             'minRefreshableVersion="3" createdVersion="3"><location ref="D1:E4" firstHeaderRow="1" firstDataRow="1" '
             'firstDataCol="1"/><pivotFields count="2"><pivotField axis="axisRow" showAll="0"><items count="3"><item x="0"/>'
             '<item x="1"/><item t="default"/></items></pivotField><pivotField showAll="0"/></pivotFields><rowFields '
             'count="1"><field x="0"/></rowFields></pivotTableDefinition>')
    book(path, sheet(rows),
         workbook_more='<definedNames><definedName name="N">Data!$A$1</definedName></definedNames>'
                       '<pivotCaches><pivotCache cacheId="1" r:id="r4"/></pivotCaches>',
         extra_relations=[("pivotCacheDefinition", "pivotCache/pivotCacheDefinition1.xml")],
         parts={"xl/pivotCache/pivotCacheDefinition1.xml": ("pivotCacheDefinition", cache),
                "xl/pivotCache/_rels/pivotCacheDefinition1.xml.rels": ("", relations(("pivotCacheRecords", "records1.xml"))),
                "xl/pivotCache/records1.xml": ("pivotCacheRecords",
                                               f'{HEAD}<pivotCacheRecords xmlns="{MAIN}" count="0"/>'),
                "xl/pivotTables/pivotTable1.xml": ("pivotTable", table),
                "xl/pivotTables/_rels/pivotTable1.xml.rels":
                    ("", relations(("pivotCacheDefinition", "../pivotCache/pivotCacheDefinition1.xml"))),
                "xl/worksheets/_rels/sheet2.xml.rels": ("", relations(("pivotTable", "../pivotTables/pivotTable1.xml")))})


def reordered(path):
    book(path, sheet('<row r="1"><c r="A1" t="inlineStr"><is><r><t>ba</t></r><r><t>ck</t></r></is></c></row>'),
         notes=sheet('<row r="2"><c r="B2"><v>1</v></c></row>',
                     before='<sheetViews><sheetView tabSelected="1" workbookViewId="0"/></sheetViews>'))
    with zipfile.ZipFile(path) as archive:
        parts = {name: archive.read(name) for name in archive.namelist()}
    parts["xl/workbook.xml"] = (f'{HEAD}<workbook xmlns="{MAIN}" xmlns:q="{OFFICE}"><bookViews><workbookView activeTab="0"/>'
                                '</bookViews><sheets><sheet name="Front" sheetId="9" q:id="r2"/><sheet name="Back" '
                                'sheetId="4" q:id="r1"/><sheet name="Chart" sheetId="5" q:id="r4"/></sheets></workbook>')
    parts["xl/_rels/workbook.xml.rels"] = relations(("worksheet", "worksheets/sheet1.xml"), ("worksheet", "worksheets/sheet2.xml"),
                                                    ("styles", "styles.xml"), ("chartsheet", "chartsheets/sheet1.xml"))
    parts["xl/chartsheets/sheet1.xml"] = (f'{HEAD}<chartsheet xmlns="{MAIN}"><sheetViews><sheetView workbookViewId="0"/>'
                                          '</sheetViews></chartsheet>')
    parts["xl/chartsheets/_rels/sheet1.xml.rels"] = relations(("printerSettings", "../printerSettings/none.bin"))
    parts["xl/printerSettings/none.bin"] = b"\0\1"
    parts["[Content_Types].xml"] = parts["[Content_Types].xml"].decode().replace(
        "<Override", '<Default Extension="bin" ContentType="application/octet-stream"/><Override', 1).replace(
        "</Types>", f'<Override PartName="/xl/chartsheets/sheet1.xml" ContentType="{TYPES}chartsheet+xml"/></Types>')
    # The list of content types last, an entry for a folder, a part with nothing in it: all are right in a package.
    parts["xl/media/"] = parts["xl/media/empty.bin"] = b""
    parts["[Content_Types].xml"] = parts.pop("[Content_Types].xml")
    package(path, parts)


def formats(path):
    styles = [0, 1, 1, 2, 2, 3, 3, 4, 4]
    rows = "".join(f'<row r="{r}"><c r="A{r}" s="{s}"/></row>' for r, s in enumerate(styles, 1))
    rows += ('<row r="20"><c r="A20" s="4"><v>45657</v></c></row><row r="21"><c r="A21"><v>0.30000000000000004</v></c></row>'
             '<row r="22"><c r="A22" t="b"><v>1</v></c></row>')
    book(path, sheet(rows))


def extensions(path):
    compatible = "http://schemas.openxmlformats.org/markup-compatibility/2006"
    behind = ('<conditionalFormatting sqref="A1:A5"><cfRule type="expression" priority="1"><formula>A1&lt;&gt;"x"</formula>'
              '</cfRule></conditionalFormatting><pageMargins left="0" right="0" top="0" bottom="0" header="0" footer="0"/>'
              f'<mc:AlternateContent xmlns:mc="{compatible}"><mc:Choice Requires="z" xmlns:z="urn:z"><z:controls><![CDATA[<&>]]>'
              '</z:controls></mc:Choice></mc:AlternateContent><extLst><ext uri="{u}" xmlns:e="urn:e"><e:own e:a="1">&#x9;'
              "</e:own></ext></extLst>")
    rows = data_rows().replace("</row>", '<c r="C2"><v>1</v><extLst><ext uri="{c}"/></extLst></c></row>', 2)
    rows = rows.replace('<c r="C2">', '<c r="C1">', 1)
    book(path, sheet(rows, behind=behind, more=f'xmlns:mc="{compatible}" xmlns:z="urn:z" mc:Ignorable="z" xml:space="preserve"',
                     before='<sheetPr><tabColor rgb="FFFF0000"/></sheetPr><dimension ref="A1:C5"/>'
                            '<cols><col min="1" max="1" width="30" customWidth="1"/></cols>'))


BY_HAND = {"prefix": prefixed, "strict": strict, "unnumbered cells": unnumbered, "shared formulas and chain": shared,
           "pivot table": pivot, "reordered sheets": reordered, "formats": formats, "extension lists": extensions}
