# Manual pages, section 3, of public headers: awk -v folder=FOLDER -v version=VERSION -f header_page.awk HEADER...
# A header is a head comment, and comments with the declarations that each of them is about behind it. HEADER.h becomes
# HEADER.3, and each function that it declares a page that leads there.

function printed(text) {
    gsub(/\\/, "\\e", text)
    gsub(/-/, "\\-", text)
    if (text ~ /^[.']/) text = "\\&" text
    return text
}

function put(line) { print line > page }

# Lines of a comment: paragraphs, numbered or marked by a dash as they are, and indented lines, which stay as they are.
function put_comment(count, i, text, is_literal, is_item) {
    for (i = 1; i <= count; i++) {
        text = comment[i]
        if (is_literal != (text ~ /^   +[^ ]/ && !is_item)) {
            is_literal = !is_literal
            put(is_literal ? ".nf" : ".fi")
        }
        if (text ~ /^ *$/) {
            is_item = 0
            if (i < count && comment[i + 1] !~ /^([0-9]+\.|-) /) put(".PP")
            continue
        }
        if (match(text, /^([0-9]+\.|-) /)) {
            put(".IP " printed(substr(text, 1, RLENGTH - 1)) " 4")
            text = substr(text, RLENGTH + 1)
            is_item = 1
        } else if (is_item) {
            sub(/^ +/, "", text)
        }
        put(printed(text))
    }
    if (is_literal) put(".fi")
}

function put_declarations(i) {
    put(".PP\n.nf\n.B")
    for (i = 1; i <= declarations; i++) put("\\fB" printed(declaration[i]) "\\fR")
    put(".fi")
    if (comments == 0) return
    put(".RS 4")
    put_comment(comments)
    put(".RE")
}

function flush() {
    if (declarations > 0 && has_head) put_declarations()
    if (declarations > 0) comments = 0
    declarations = 0
}

function name_of(file) {
    sub(/.*\//, "", file)
    sub(/\.h$/, "", file)
    return file
}

function put_see_also(i) {
    flush()
    put(".SH SEE ALSO")
    for (i = 1; i < ARGC; i++)
        if (ARGV[i] ~ /\.h$/ && name_of(ARGV[i]) != header) put(".BR " name_of(ARGV[i]) " (3),")
    put(".BR kcnvrt (1)")
}

function start(name) {
    page = folder "/" name ".3"
    has_head = comments = declarations = 0
    put(".\\\" Made of the header.")
    put(".TH \"" name "\" 3 \"\" \"k_cnvrt " version "\" \"k_cnvrt\"\n.ad l\n.nh\n.SH NAME")
}

function put_head(name, purpose) {
    purpose = comment[1]
    sub(/^[^:]*: /, "", purpose)
    comment[1] = toupper(substr(purpose, 1, 1)) substr(purpose, 2)
    sub(/\. .*|\.$/, "", purpose) # the first sentence
    put(name " \\- " printed(purpose))
    put(".SH SYNOPSIS\n.nf\n.B #include <" name ".h>\n.PP")
    put(printed("cc ... $(pkg-config --cflags --libs " package(name) ")") "\n.fi")
    put(".SH DESCRIPTION")
    put_comment(comments)
    put(".SH FUNCTIONS")
    has_head = 1
    comments = 0
}

function package(name) { return name == "k_cnvrt_text" ? name : "k_cnvrt" }

function link(line, name) {
    if (line !~ /^[a-z].*\(/ || line ~ /^typedef/ || !match(line, /[A-Za-z_][A-Za-z_0-9]*\(/)) return
    name = substr(line, RSTART, RLENGTH - 1)
    if (name == header) return
    print ".so man3/" header ".3" > (folder "/" name ".3")
    close(folder "/" name ".3")
}

FNR == 1 {
    if (page != "") put_see_also()
    header = name_of(FILENAME)
    start(header)
    is_comment = 0
}

!is_comment && /^\/\*/ { flush(); is_comment = 1; comments = 0 }
is_comment {
    text = $0
    is_comment = text !~ /\*\/$/
    sub(/ ?\*\/$/, "", text)
    sub(/^\/\* ?/, "", text)
    sub(/^ \* ?/, "", text)
    if (text != "" || (comments > 0 && is_comment)) comment[++comments] = text
    if (!is_comment && !has_head) put_head(header)
    next
}
# What depends on the compiler is not the reader's.
/^#(if|ifdef) / { is_left_out = 1 }
is_left_out { if (/^#endif/) is_left_out = 0; next }
/^#(ifndef|endif|include)/ || /^#define K_[A-Z_]*_H$/ { next }
# Lines of a declaration in braces may be blank.
/^$/ && depth == 0 { flush(); next }
{
    declaration[++declarations] = $0
    depth += gsub(/\{/, "{") - gsub(/\}/, "}")
    link($0)
}
END { put_see_also() }
