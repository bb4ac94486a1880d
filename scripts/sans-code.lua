-- Pandoc filter for the quality measure: keeps the prose, drops code, formulas and raw markup,
-- which no spell checker should read.
function Code(_) return {} end
function CodeBlock(_) return {} end
function Math(_) return {} end
function RawInline(_) return {} end
function RawBlock(_) return {} end
