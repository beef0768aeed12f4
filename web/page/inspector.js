// The code values of one pixel, in a table.

const cell = (name, text, className) => Object.assign(document.createElement(name), { textContent: text, className });

const share = ({ bits }, value) => `${((100 * value) / (2 ** bits - 1)).toFixed(1)} %`;
const hexadecimal = (value) => `0x${value.toString(16).toUpperCase()}`;

/** Of one picture, or of two in columns beside each other. */
export function showValues(table, pictures) {
  const [first, second] = pictures;
  const rows = (first ?? []).map((c, i) => {
    const row = document.createElement('tr');
    row.append(Object.assign(cell('th', c.key), { scope: 'row' }));
    const [value] = c.values;
    row.append(cell('td', c.isFloat ? String(Math.fround(value)) : String(value), 'number'));
    row.append(cell('td', c.isFloat ? '' : hexadecimal(value), 'number'), cell('td', c.isFloat ? '' : share(c, value)));
    const other = second?.[i];
    if (other) row.append(cell('td', `second ${other.key} ${other.values[0]}`, 'number'));
    return row;
  });
  table.replaceChildren(...rows);
}
