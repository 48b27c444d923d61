-- Makes a page's links to other Markdown pages links to their HTML, and keeps wide tables within the
-- page.

local function target(address)
  if address:match("^%a+:") then
    return address
  end
  local path, anchor = address:match("^([^#]*)(#?.*)$")
  local name = path:match("([^/]+)%.md$")
  return name and (name .. ".html" .. anchor) or address
end

function Link(link)
  link.target = target(link.target)
  return link
end

function Table(element)
  local classes = #element.colspecs > 3 and { "table", "wide" } or { "table" }
  return pandoc.Div({ element }, pandoc.Attr("", classes, { tabindex = "0" }))
end
