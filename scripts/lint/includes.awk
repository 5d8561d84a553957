# Reads "FILE:LINE "PATH"" lines, checks each against the table.

BEGIN {
  while ((getline line < table) > 0) read_rule(line)
}

function read_rule(line,   fields, count, i) {
  count = split(line, fields, " ")
  if (count == 0 || fields[1] ~ /^#/) return
  if (fields[1] == "parent" || fields[1] == "outside") {
    exceptions[++exception_count] = fields[1] " " fields[2]
    allowed_header[exception_count] = fields[3]
    return
  }
  storey_name[++storey_count] = fields[1]
  storey_path[storey_count] = fields[count]
  for (i = 2; i < count; i++) may_include[fields[1], fields[i]] = 1
}

function storey_of(path,   i) {
  for (i = 1; i <= storey_count; i++)
    if (path ~ storey_path[i]) return storey_name[i]
  return ""
}

# Whether a rule of this kind speaks about the file, and lets the header pass.
function rule_for(kind, file, header,   i, parts, verdict) {
  verdict = "none"
  for (i = 1; i <= exception_count; i++) {
    split(exceptions[i], parts, " ")
    if (parts[1] != kind || file !~ parts[2]) continue
    if (header ~ allowed_header[i]) return "allowed"
    verdict = "refused"
  }
  return verdict
}

function stem(path) {
  sub(/(_p)?\.(h|cpp)$/, "", path)
  return path
}

function room(path) {
  sub(/\/.*/, "", path)
  return path
}

function complain(what) {
  print location " includes " header ": " what
  violations++
}

# The star stands for every storey but the tests.
function may_see(from, to) {
  return (from, to) in may_include || ((from, "*") in may_include && to != "" && to != "test")
}

function check_inside(   from, to) {
  if ((getline unused < header) < 0) return complain("there is no such file from the root")
  close(header)
  if (header ~ /_p\.h$/ && from_room != "tests") {
    if (room(header) != from_room) complain("it is internal to " room(header) "/")
    if (from_room ~ /^(displaylist|lumen)$/ && file ~ /\.h$/ && file !~ /_p\.h$/)
      complain("it is internal, and the including header is public")
  }
  if (stem(header) == stem(file) || rule_for("parent", file, header) == "allowed") return
  from = storey_of(file)
  to = storey_of(header)
  if (!may_see(from, to)) complain("'" from "' may not see '" to "'")
}

{
  location = $1
  file = location
  sub(/:.*/, "", file)
  header = substr($2, 2, length($2) - 2)
  from_room = room(file)
  if ($2 ~ /^"/) check_inside()
  else if (rule_for("outside", file, header) == "refused") complain("it is foreign to " from_room "/")
}

END { exit violations > 0 }
