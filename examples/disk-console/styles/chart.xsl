<?xml version="1.0" encoding="utf-8"?>
<!-- The results of each query as bars: the first column names them, the second measures them. A third one, where there
     is one, is the whole that the bar is a part of; without it the longest bar is the whole. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="html" encoding="utf-8" indent="yes"/>

  <xsl:variable name="barWidth" select="400"/>

  <xsl:template match="/Results">
    <html>
      <head>
        <title><xsl:value-of select="@Server"/></title>
        <style type="text/css">
          body { font: 10pt "Segoe UI", Tahoma, sans-serif; margin: 16px; color: #263238; }
          td { padding: 3px 8px 3px 0; }
          div.whole { background: #dcebfa; height: 14px; }
          div.part { background: #1e73d2; height: 14px; }
        </style>
      </head>
      <body>
        <xsl:apply-templates select="Query"/>
      </body>
    </html>
  </xsl:template>

  <xsl:template match="Query">
    <xsl:variable name="name" select="Column[1]/@Property"/>
    <xsl:variable name="measure" select="Column[2]/@Property"/>
    <xsl:variable name="total" select="Column[3]/@Property"/>
    <xsl:variable name="longest">
      <xsl:for-each select="Row/Value[@Property = $measure]">
        <xsl:sort select="." data-type="number" order="descending"/>
        <xsl:if test="position() = 1"><xsl:value-of select="."/></xsl:if>
      </xsl:for-each>
    </xsl:variable>
    <h2><xsl:value-of select="Column[2]/@Title"/></h2>
    <table>
      <xsl:for-each select="Row">
        <xsl:sort select="Value[@Property = $name]"/>
        <xsl:variable name="value" select="number(Value[@Property = $measure])"/>
        <xsl:variable name="whole">
          <xsl:choose>
            <xsl:when test="$total"><xsl:value-of select="Value[@Property = $total]"/></xsl:when>
            <xsl:otherwise><xsl:value-of select="$longest"/></xsl:otherwise>
          </xsl:choose>
        </xsl:variable>
        <tr>
          <td><xsl:value-of select="Value[@Property = $name]"/></td>
          <td>
            <div class="whole" style="width: {$barWidth}px">
              <xsl:if test="$whole &gt; 0">
                <div class="part" style="width: {round($barWidth * $value div $whole)}px"></div>
              </xsl:if>
            </div>
          </td>
          <td><xsl:value-of select="$value"/></td>
        </tr>
      </xsl:for-each>
    </table>
  </xsl:template>
</xsl:stylesheet>
