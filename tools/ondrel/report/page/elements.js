// Making elements. Whatever comes from the definition becomes text of a node here, and never markup.

const language = 'en';

// make('a', { class: 'link', href: '#x' }, 'text', child, null): an element with attributes, text and children.
function make(tag, attributes, ...children) {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes || {})) {
    if (value === null || value === undefined || value === false) continue;
    element.setAttribute(name, value === true ? '' : value);
  }
  element.append(...children.flat().filter((child) => child !== null && child !== undefined));
  return element;
}

// Text with everything that could hide, break the line or turn the reading direction written as an escape.
const hiddenCharacters = /[\u0000-\u001f\u007f-\u009f\u061c\u200b-\u200f\u2028-\u202e\u2060\u2066-\u2069\ufeff]/g;
const turningCharacters = /[\u061c\u200e\u200f\u202a-\u202e\u2066-\u2069]/;

function shown(text) {
  const short = { '\n': '\\n', '\r': '\\r', '\t': '\\t' };
  return text.replace(hiddenCharacters, (character) =>
    short[character] || '\\u' + character.charCodeAt(0).toString(16).toUpperCase().padStart(4, '0'));
}

// A name, apart from the text around it in its reading direction; `query` is marked where it stands in it.
function nameElement(name, query) {
  if (name === '') return make('i', { class: 'muted' }, '(no name)');
  const text = shown(name);
  const at = query ? text.toLowerCase().indexOf(query) : -1;
  // Few characters change their length with their case; a name with one is not marked.
  if (at < 0 || text.toLowerCase().length !== text.length) return make('bdi', null, text);
  const behind = at + query.length;
  return make('bdi', null, text.slice(0, at), make('mark', null, text.slice(at, behind)), text.slice(behind));
}

// The picture at an address of data, or an empty place of its size.
function pictureElement(address, size, className) {
  if (!address) return make('span', { class: 'no-picture ' + (className || '') });
  return make('img', { src: address, width: size, height: size, alt: '', class: className || '' });
}

function count(number, one, many) {
  return number.toLocaleString(language) + ' ' + (number === 1 ? one : many);
}

function sizeText(bytes) {
  if (bytes === null) return 'size unknown';
  if (bytes < 1024) return count(bytes, 'byte', 'bytes');
  const units = ['KiB', 'MiB', 'GiB', 'TiB'];
  let unit = -1;
  let size = bytes;
  do {
    size /= 1024;
    ++unit;
  } while (size >= 1024 && unit + 1 < units.length);
  return size.toLocaleString(language, { maximumFractionDigits: size < 10 ? 1 : 0 }) + ' ' + units[unit];
}

// Fills a list with the elements of items, a step at a time: a button brings the next ones.
function fillList(list, items, render, step = 200) {
  let next = 0;
  const more = make('button', { type: 'button', class: 'more' });
  const add = () => {
    const first = next;
    next = Math.min(next + step, items.length);
    list.append(...items.slice(first, next).map(render));
    if (next === items.length) {
      more.remove();
    } else {
      more.textContent = count(items.length - next, 'more', 'more');
      list.after(more);
    }
    return list.children[first];
  };
  more.addEventListener('click', () => {
    const first = add();
    if (!more.isConnected) {
      first.tabIndex = -1;
      first.focus();
    }
  });
  queueMicrotask(add);
  return list;
}
