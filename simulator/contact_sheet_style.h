// The look of `index.html`: dark, like the room it is looked at in. Kept apart from the page's
// text, which is the logic.
#pragma once

namespace mixdecks::simulator {

inline constexpr char kContactSheetStyle[] = R"css(
:root { color-scheme: dark; --line: #2c3440; --card: #171c24; --dim: #8b97a8; --live: #e5484d; }
* { box-sizing: border-box; }
body { margin: 0 auto; padding: 2.5rem 2rem 4rem; max-width: 92rem; background: #0e1116;
  color: #e8ecf2; font: 15px/1.45 system-ui, "Segoe UI", Roboto, "DejaVu Sans", sans-serif; }
header { display: flex; flex-wrap: wrap; align-items: baseline; gap: .4rem 1.6rem;
  padding-bottom: 1.2rem; border-bottom: 1px solid var(--line); }
h1 { margin: 0; font-size: 1.6rem; font-weight: 600; letter-spacing: -.01em; }
h2 { margin: 2rem 0 .9rem; font-size: .8rem; font-weight: 600; letter-spacing: .09em;
  text-transform: uppercase; color: var(--dim); }
header p { margin: 0; color: var(--dim); }
ol { list-style: none; margin: 0; padding: 0; display: grid; gap: 1rem; }
.stills { grid-template-columns: repeat(auto-fill, minmax(17rem, 1fr)); }
.players { grid-template-columns: repeat(auto-fill, minmax(13rem, 1fr)); }
li { min-width: 0; border: 1px solid var(--line); border-radius: 8px; background: var(--card);
  overflow: hidden; }
li.live { border-color: var(--live); }
li.empty { border-style: dashed; background: none; }
.picture { display: block; aspect-ratio: 16 / 9;
  background: repeating-conic-gradient(#3a414c 0 25%, #2a3039 0 50%) 0 0 / 20px 20px; }
.picture img { display: block; width: 100%; height: 100%; }
.empty .picture { display: grid; place-items: center; background: none; color: #4d5868; }
.text { display: flex; gap: .75rem; padding: .7rem .85rem .8rem; }
.number { flex: none; min-width: 1.9rem; color: var(--dim); font-variant-numeric: tabular-nums;
  font-weight: 600; }
.what { flex: 1; min-width: 0; }
.name { display: block; font-weight: 600; overflow-wrap: anywhere; }
.facts { color: var(--dim); font-size: .85rem; }
.badge { float: right; margin: .1rem 0 0 .5rem; padding: 0 .5rem; border-radius: 1rem;
  background: var(--live); color: #fff; font-size: .75rem; font-weight: 600; line-height: 1.4rem; }
a { color: inherit; }
footer { margin-top: 2.5rem; color: #5d6878; font-size: .8rem; }
)css";

}  // namespace mixdecks::simulator
